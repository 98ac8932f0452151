/// @file
/// What a host program includes: the scan-settings dialog for document scanners.
///
/// The life of a dialog in a host: creatKestrelSetUI() once, initKestrelSetUI() when a scanner has
/// been opened, showWindow() as often as the user asks for it, setAllParamBySettingUI() before each
/// scan, then the getters, and `delete static_cast<QDialog*>(ui)` in the end.
///
/// Every function must be called from the thread that runs the QApplication, after it has been
/// made. None of them throws, none checks @p ui for null, none takes ownership of what it is given.
/// None reports an error of the scanner or of the settings file: an option that the scanner lacks
/// or refuses is passed over, a file that can't be written leaves the dialog working in memory. The
/// names, odd spellings included, and the C++ symbol names are the interface.
#pragma once

#include <QString>

#include <cstdint>

/// The host's description of the scanner it has opened; little-endian, no padding.
struct ScannerIdentity
{
    std::uint32_t vid; ///< USB vendor id
    std::uint32_t pid; ///< USB product id
    char name[128];    ///< base name of the device, UTF-8: names the settings file. An empty one
                       ///< gives ".ini", the same file for every scanner without a name
    char backend[128]; ///< name of the SANE backend, UTF-8, for example "kestrel_adv". Like the
                       ///< other one read up to its NUL, at most 128 bytes
};
static_assert(sizeof(ScannerIdentity) == 264, "the record is shared with hosts as raw memory");

/// Model names of the scanners made for this dialog; kestrel_model_product_ids has the matching
/// row.
extern Q_DECL_EXPORT const char* const kestrel_model_names[3];
/// USB product ids of these models as lower-case hexadecimal text.
extern Q_DECL_EXPORT const char* const kestrel_model_product_ids[3];

/// Creates a dialog; it is not shown and bound to no scanner.
/// @param parent the QWidget to be its parent, or null
/// @return the dialog, a QDialog owned by @p parent or, without one, by the caller, who deletes it
///         with `delete static_cast<QDialog*>(ui)` before the QApplication goes; null when there is
///         no memory
Q_DECL_EXPORT void* creatKestrelSetUI(void* parent);

/// Binds the dialog to an open scanner: finds its options, opens its settings file and loads what
/// was confirmed last. May be called again, for the same scanner or another one. Takes as long as
/// the scanner needs for some three to four hundred small requests.
/// @param ui the dialog
/// @param sane_handle the SANE_Handle of the open device; with null the call does nothing. It stays
///        the host's and must stay open while the dialog is bound to it
/// @param identity a ScannerIdentity; read during the call only. Null stands for an empty one
/// @param config_dir the folder of the settings files, UTF-8, without a slash at its end; read
///        during the call only. Created when it does not exist; with null nothing is kept
Q_DECL_EXPORT void initKestrelSetUI(void* ui, void* sane_handle, void* identity,
                                    const char* config_dir);

/// Replaces the SANE handle, for instance after the host has opened the same scanner again; nothing
/// else is read or loaded.
/// @param ui the dialog
/// @param sane_handle the new SANE_Handle, the host's as before; with null the call does nothing
Q_DECL_EXPORT void setDevice(void* ui, void* sane_handle);

/// Shows the dialog modally and returns when the user has closed it; any selection made on the
/// preview is dropped first. While it is open a preview may scan: no scan of the host's may be
/// under way.
/// @param ui the dialog
/// @return the result of QDialog::exec(), which does not tell OK from Cancel
Q_DECL_EXPORT int showWindow(void* ui);

/// Sends every setting to the scanner, always in the same order. To be called before each scan,
/// ahead of sane_start(): a preview leaves its own values behind. Without a bound scanner nothing
/// is sent. Each setting looks its option up anew: a scanner with some eighty options gets about
/// 1,500 small requests, nearly all of them for descriptions.
/// @param ui the dialog
Q_DECL_EXPORT void setAllParamBySettingUI(void* ui);

/// Selects the user template that belongs to a button of the scanner: the one named "button" and
/// the number.
/// @param ui the dialog
/// @param index the number of the button, as the scanner counts them
/// @return 1 when there is such a template and it was loaded, else 0
Q_DECL_EXPORT int setButtonTemplage(void* ui, int index);

/// The resolution of the next scan.
/// @param ui the dialog
/// @return the resolution that is chosen, in dpi; 0 when it is not a number
Q_DECL_EXPORT int getCurrentResolution(void* ui);

/// The colour correction, which the host applies to the pictures if it can.
/// @param ui the dialog
/// @return the index of the colour correction: 0 none, 1 mixed, 2 text, 3 photo
Q_DECL_EXPORT int getCurrentFiletype(void* ui);

/// Where the paper comes from; 0 before a scanner has been bound.
/// @param ui the dialog
/// @return the paper source: 0 feeder, 1 flatbed, 2 chosen by the scanner
Q_DECL_EXPORT int getScanSourceType(void* ui);

/// A fixed answer: the dialog never asks for a single sheet.
/// @param ui the dialog
/// @return always 0
Q_DECL_EXPORT int isSingleScan(void* ui);

/// How long to wait before the next sheet on the flatbed is scanned.
/// @param ui the dialog
/// @return the pause between two flatbed scans in seconds; 0 for any other source
Q_DECL_EXPORT int getWaitingJobTime(void* ui);

/// Whether the next sheet gives images of both sides.
/// @param ui the dialog
/// @return whether the settings last sent by setAllParamBySettingUI() scan both sides of the sheet;
///         false before any were sent
Q_DECL_EXPORT bool isDoubleSideScan(void* ui);

/// Switches the removal of blank pages and tells the scanner at once.
/// @param ui the dialog
/// @param on the new state
/// @return true when the setting changed, false when it was so already
Q_DECL_EXPORT bool setBlankPageFunc(void* ui, bool on);

/// Whether the scanner cuts each side into two images.
/// @param ui the dialog
/// @return whether each image is to be split in two
Q_DECL_EXPORT bool isSplitScan(void* ui);

/// A probe that tells whether library and host share one Qt: shows a new dialog, which nobody owns.
/// @param s any text
/// @return @p s with " hell" appended; empty when there is no memory
Q_DECL_EXPORT QString outGetStr(QString s);

/// Converts packed 24-bit RGB to the 32-bit pixels of QImage::Format_RGB32 (bytes B, G, R, 0).
/// The last row is left unconverted: its bytes are not defined.
/// @param rgb rows of 3 x @p width bytes without padding, @p height of them; stays the caller's
/// @param width pixels a row
/// @param height rows
/// @return 4 x @p width x @p height bytes, one byte where that is 0, to be released with free();
///         null when a size is below 0 or the product too large, or when there is no memory
Q_DECL_EXPORT unsigned char* RGB24TO32(unsigned char* rgb, int width, int height);
