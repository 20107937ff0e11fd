#pragma once

/// The two kinds of settings file, as the window's buttons have them.
namespace MFiles {

struct Kind {
    const char* m_strSave;           ///< the button that writes one
    const char* m_strLoad;           ///< the button that reads one
    const char* m_strOtherSettings;  ///< a file with other settings than a new window's
    const char* m_strEnding;
};

constexpr Kind Parameters() {
    return {"btnSave", "btnLoad", "/other.dt1", ".dt1"};
}
constexpr Kind Lan() {
    return {"btnLanSave", "btnLanLoad", "/other.dt2", ".dt2"};
}

}  // namespace MFiles
