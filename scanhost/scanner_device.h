/// @file
/// The SANE session of this program, the scanners it sees and the one it has opened.
#pragma once

#include <QString>

#include <sane/sane.h>

#include <optional>
#include <vector>

namespace kestrel {

/// A scanner as sane_get_devices() describes it.
struct ScannerInfo
{
    QString name;   ///< SANE device name, to be given to ScannerDevice::open()
    QString vendor; ///< may be empty
    QString model;  ///< may be empty
    QString type;   ///< may be empty

    /// @return maker and model for people to read; the device name when the scanner states neither
    QString title() const;
};

/// sane_init() and sane_exit(). One object a process, made before any thread that uses SANE.
class SaneLibrary
{
public:
    SaneLibrary();
    ~SaneLibrary();
    Q_DISABLE_COPY_MOVE(SaneLibrary)

    /// @return the result of sane_init()
    SANE_Status status() const { return m_status; }

    /// Asks SANE for all scanners; may take seconds with scanners in the network.
    /// @param[out] status receives the result of sane_get_devices(); may be null
    static std::vector<ScannerInfo> devices(SANE_Status* status = nullptr);

private:
    SANE_Status m_status = SANE_STATUS_UNSUPPORTED;
};

/// An open scanner; closed by the destructor.
class ScannerDevice
{
public:
    ScannerDevice() = default;
    ~ScannerDevice() { close(); }
    Q_DISABLE_COPY_MOVE(ScannerDevice)

    /// Opens the scanner, after closing the one that was open.
    /// @param info info.name is what SANE is asked for
    SANE_Status open(const ScannerInfo& info);
    void close();

    /// @return the handle, owned by this object; null while nothing is open
    SANE_Handle handle() const { return m_handle; }
    const ScannerInfo& info() const { return m_info; }

    /// @return the text of the string option @p name; nothing when the scanner has no such option,
    /// or
    ///         it is inactive, or cannot be read
    std::optional<QString> textOption(const char* name) const;

    /// @return the value of the single switch, integer or fixed-point option @p name, else as
    ///         textOption()
    std::optional<double> numberOption(const char* name) const;

private:
    struct Found
    {
        SANE_Int index;
        const SANE_Option_Descriptor* descriptor;
    };
    std::optional<Found> find(const char* name) const;

    SANE_Handle m_handle = nullptr;
    ScannerInfo m_info;
};

} // namespace kestrel
