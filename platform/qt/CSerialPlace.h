#pragma once

#include <string>

/// A serial port that was named beforehand.
struct CSerialPlace {
    std::string m_strDevice;    ///< what it is opened by: "/dev/ttyUSB0"
    std::string m_strSettings;  ///< as MSerialSettings reads it: "9600,E,8,1"
};
