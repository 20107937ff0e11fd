#pragma once

#include <memory>
#include <string>

struct _UMockdevTestbed;  // NOLINT(readability-identifier-naming): the library's name

/// An emulated system whose only USB devices are those plugged into it.
///
/// Programs started while it exists live in it when PreloadLibrary is preloaded into them; so does
/// this program. One at a time.
class CUsbWorld {
public:
    /// The library that makes a program see the emulated system, for LD_PRELOAD.
    static constexpr const char* PreloadLibrary = "libumockdev-preload.so.0";

    CUsbWorld();
    ~CUsbWorld();
    CUsbWorld(const CUsbWorld&) = delete;
    CUsbWorld& operator=(const CUsbWorld&) = delete;

    /// True when this program lives in it itself.
    [[nodiscard]] bool IsInside() const;

    /// Puts a device there, its attributes and properties in the form of a device record, or takes
    /// it away by its path.
    void Add(const std::string& p_strRecord);
    void Remove(const std::string& p_strPath);

    /// Takes a device's file away (its name begins with "/dev/"); the device stays on the bus.
    void RemoveNode(const std::string& p_strName);

    [[nodiscard]] _UMockdevTestbed* Testbed() const { return m_objTestbed; }

private:
    _UMockdevTestbed* m_objTestbed;
};
