/// @file
/// The scan-settings dialog.
#pragma once

#include "rules/scan_range.h"
#include "rules/side_mode.h"
#include "scanner/frame_reader.h"
#include "scanner/vendor_driver.h"

#include <QDialog>
#include <QHash>
#include <QRect>
#include <QString>
#include <QVariant>

#include <sane/sane.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

class CustomResolution;
class EditTemplate;
class QDoubleSpinBox;
class QSettings;
class Q_DECL_EXPORT Ui_KestrelSetting; // generated from the form
namespace kestrel {
struct Setting;
}

/// The scan-settings dialog. Hosts use it through kestrelsettingui.h.
///
/// One object per scanner or several in turn; everything runs on the GUI thread. The SANE handle is
/// the host's. Slots named on_<object>_<signal> are connected by name to the controls of the form.
class Q_DECL_EXPORT KestrelSettingUI : public QDialog
{
    Q_OBJECT

public:
    /// Builds the dialog, bound to no scanner, and reads the system information.
    /// @param parent owner; may be null
    explicit KestrelSettingUI(QWidget* parent = nullptr);
    /// The settings object of the last binding stays behind, see set_device().
    ~KestrelSettingUI() override;
    KestrelSettingUI(const KestrelSettingUI&) = delete;
    KestrelSettingUI& operator=(const KestrelSettingUI&) = delete;

    // Life cycle and host interface (kestrelsetting.cpp)
    /// Hides what no supported scanner has: the separation tab and some groups.
    void init_config();
    /// Replaces the SANE handle; nothing is read or loaded.
    /// @param handle the SANE_Handle, the host's
    /// @return false for a null handle, which changes nothing
    bool set_device(void* handle);
    /// Binds the dialog: opens the settings file and the vendor's driver library, reads every
    /// option, loads what was confirmed last and sends the power settings. The settings object of
    /// an earlier binding is not deleted: hosts may hold on to it.
    /// @param handle the SANE_Handle, the host's; has to stay open while bound
    /// @param identity a ScannerIdentity, read during the call only; null stands for an empty one
    /// @param config_dir folder of the settings files, UTF-8; null: nothing is kept
    /// @return false for a null handle, which changes nothing
    bool set_device(void* handle, void* identity, const char* config_dir);
    /// Drops the selection on the preview, and that it was to be scanned.
    void reset_preview();
    /// @return index of the colour correction: 0 none, 1 mixed, 2 text, 3 photo
    int get_color_correction();
    /// @return the paper source: 0 feeder, 1 flatbed, 2 chosen by the scanner; 0 before any was
    /// known
    int get_scan_source_type();
    /// @return the pause between two flatbed scans in seconds; 0 for any other source
    int get_waiting_job_time();
    /// @return whether setAllParam() last chose a source that scans both sides
    bool is_double_side_scan();
    /// @return whether each image is to be split in two
    bool is_split_scan();

    // System information (kestrelsetting_maintenance.cpp)
    /// Appends the operating system to the information text.
    void getOsInfo();
    /// Appends the processor to the information text.
    void getCpuInfo();
    /// Appends the main memory to the information text.
    void getMemoryInfo();

    // Talking to the scanner (_discovery, _apply, _preview, _maintenance)
    /// Walks the options of the scanner: each that is known by name gives its control limits and
    /// value. Then loads the configuration and sends the power settings.
    /// @return 1; 0 when the number of options can't be had, and nothing is loaded then
    int GetOptionByName();
    /// Sets one option, found by name without regard to case; the only way to the scanner. The text
    /// is converted by the option's type; a millimetre option takes decimal millimetres.
    /// @param name the option
    /// @param value its value as text; ignored for gamma tables, which are sent from the dialog's
    /// own;
    ///        null for buttons
    /// @return the SANE_Status of the set, SANE_STATUS_GOOD without a scanner. A name that the
    /// scanner
    ///         lacks gets the status with which it refuses the index behind its last option
    unsigned int kst_SetParam(const char* name, const char* value);
    /// Fills a gamma table: entry i is 255 times (i / 255) to the power of @p gamma, rounded.
    /// @param table 256 entries; stays the caller's
    /// @param gamma the exponent; 1.0 gives the identity
    /// @return always true
    bool SetupGammaTable1(int* table, double gamma);
    /// Switches the removal of blank pages and tells the scanner at once.
    /// @param on the new state
    /// @return true when it changed
    bool set_blank_page_func(bool on);
    /// Sends every setting to the scanner, one option at a time and always in this order, and notes
    /// whether both sides will be scanned. What the scanner refuses is passed over.
    void setAllParam();
    /// Sends the fixed values of a preview: the whole area in colour at 75 dpi, everything else
    /// off. The controls stay as they are.
    void setParamForPreview();
    /// Tells the user why a scan that the dialog started failed, and cancels it.
    /// @param status the result of sane_start(); SANE_STATUS_GOOD and statuses unknown to SANE 1.0
    /// show
    ///        nothing and cancel nothing
    void scan_error(SANE_Status status);
    /// Reads the wear counters through the vendor's driver library; without one they stay.
    void getScannerRollerCount();
    /// Reads the wear counters and writes the information tab anew.
    void setScannerInfo();
    /// Hides what only one backend can do: long paper is for "kestrel_adv".
    /// @param vid not used
    /// @param backend name of the SANE backend, in any case; null counts as empty
    void lockFunctionByVid(unsigned int vid, const char* backend);
    /// Sends the power saving and power off settings, times in minutes.
    void setPowerManager();

    // Settings file and templates (_configuration, _loading, _templates)
    /// Keeps a folder for the host; the dialog itself saves nothing there.
    /// @param path UTF-8; a slash is appended to it in place, so the buffer needs room for one more
    ///        character. Null changes nothing
    void setsavepath(char* path);
    /// Writes the defaults, as the controls show them, into the settings file.
    /// @param group the group to write; nothing happens before a binding
    void writeDefaultConfig(QString group);
    /// Writes the settings, as the controls show them, into the settings file. A file that can't be
    /// written is not reported; the values stay in memory for the next save.
    /// @param group the group to write; nothing happens before a binding
    void writeConfig(QString group);
    /// Loads a group of the settings file into the controls. A key that is missing or empty leaves
    /// its control as it is, and so does everything in a group that does not exist.
    /// @param group the group to read; nothing happens before a binding
    void loadConfig(QString group);
    /// Selects, and thereby loads, the template named "button" and the number.
    /// @param n number of the scanner's button
    /// @return 1; 0 when there is no such template, and nothing changes
    int setButtonTemplage(int n);

    // Rules and preview (_mode, _resolution, _selection)
    /// Brings tabs, panels and image boxes in step with the two buttons of the colour detection.
    void color_detection_image();
    /// @return the chosen resolution in dpi; 0 when it is not a number
    int get_resolution();
    /// Moves the selection on the preview to the offsets beside it.
    void setMoveRect();
    /// Gives the selection on the preview the width and height beside it.
    void setSelectedRect();

public slots:
    // Buttons of the dialog (kestrelsetting.cpp)
    /// OK: saves into the selected template or the working group, asks whether a selection on the
    /// preview is to be scanned, sends the power settings and hides the dialog.
    void on_sure_clicked();
    /// Closes the dialog, which throws unsaved edits away.
    void on_cancel_clicked();
    /// Escape: the same as Cancel.
    void reject() override;

    // Maintenance
    /// Lets the scanner eject its paper.
    void on_eject_paper_manual_clicked();

    // Templates
    /// Loads the chosen template, or the working settings.
    /// @param index entry of the list; 0 is the working settings, below 0 nothing happens
    void on_usertemplate_currentIndexChanged(int index);
    /// Loads the defaults; nothing is saved before OK.
    void on_default_setting_clicked();
    /// Opens the template manager.
    void on_template_setting_clicked();
    /// Stores the controls as a template.
    /// @param name of the template, which is its group in the file
    void addUserTemplateConfig(QString name);
    /// The template manager has closed: lists the templates anew and loads one.
    /// @param reset go back to the working settings; a confirmed template does so in any case
    void resetCurrentUserTemplate(bool reset);

    // Scan source
    /// Adapts the dialog to the paper source.
    /// @param index not used: the text on show decides
    void on_source_currentIndexChanged(int index);

    // Scan range and paper size
    /// Takes the area from the paper size.
    /// @param index not used: the text on show decides
    void on_scanrange_setting_currentIndexChanged(int index);
    /// Turns the area.
    /// @param id 0 landscape, 1 portrait
    void testGroup(int id);
    /// Centres the area across the feed and locks its left edge.
    /// @param on the new state
    void on_center_alignment_toggled(bool on);
    /// Keeps the left edge where the area has room.
    /// @param v millimetres
    void on_tl_x_valueChanged(double v);
    /// Keeps the top edge where the area has room.
    /// @param v millimetres
    void on_tl_y_valueChanged(double v);
    /// Keeps the width within the scanner's; centred, it makes the paper size a custom one.
    /// @param v millimetres
    void on_br_x_valueChanged(double v);
    /// Keeps the height within the scanner's; by hand it makes the paper size a custom one.
    /// @param v millimetres
    void on_br_y_valueChanged(double v);

    // Image mode, multistream and colour
    /// An image box was clicked: at least one stays checked, and both sides give the same images.
    /// @param id 0 to 2 front black-and-white, gray, colour; 3 to 5 the same of the back
    void setMultistream(int id);
    /// Colour detection of the front was switched.
    /// @param on the new state
    void on_color_detection_image_front_toggled(bool on);
    /// Colour detection of the back was switched.
    /// @param on the new state
    void on_color_detection_image_back_toggled(bool on);
    /// Gives the threshold the limits and the usual value of the method.
    /// @param index 0 dynamic, 1 fixed, 2 diffusion
    void on_binarization_currentIndexChanged(int index);
    /// Shows the gamma and builds the table.
    /// @param v 100 times the gamma
    void on_gamma_set_valueChanged(int v);
    /// Moves the slider to a typed gamma.
    /// @param g the gamma
    void on_gamma_value_valueChanged(double g);
    /// Enables the advanced treatment of a dropout colour.
    /// @param index 0 none, 1 red, 2 green, 3 blue
    void on_color_dropout_currentIndexChanged(int index);

    // Resolution
    /// Opens the dialog for the custom resolution.
    void on_customresolution_clicked();
    /// Adds, changes or removes the custom entry of the resolution list.
    /// @param text the entry, for example "custom-250"; empty removes it
    void getCustomResolution(QString text);

    // Paper handling, image processing, cache, power
    /// Enables either the paper size or the adjustments of an automatic crop.
    /// @param index 0 fixed size, others automatic
    void on_autocropdeskew_currentIndexChanged(int index);
    /// Enables the way of automatic orientation where it is chosen.
    /// @param index 4 automatic orientation
    void on_rotate_currentIndexChanged(int index);
    /// Lists the ways of the chosen background processing.
    /// @param index 0 none, 1 smoothing, 2 removal
    void on_background_processing_currentIndexChanged(int index);
    /// Shows the number of the slider.
    /// @param v threshold
    void on_blankpage_threshold_valueChanged(int v);
    /// Shows the number of the slider.
    /// @param v sensitivity
    void on_background_processing_sensitivity_valueChanged(int v);
    /// Raises the size of specks to what so many dots need.
    /// @param n dots
    void on_despeckle_dotsnumber_valueChanged(int n);
    /// Gives the height its limit for long or for normal paper.
    /// @param on the new state
    void on_long_paper_scan_toggled(bool on);
    /// Shows the panel of the cache mode.
    /// @param index 0 none, 1 pages, 2 memory
    void on_cachemode_currentIndexChanged(int index);
    /// Shows the number of the slider.
    /// @param v megabytes
    void on_cachemode_value_valueChanged(int v);
    /// Shows the number of the slider.
    /// @param v images
    void on_cachemode_image_num_valueChanged(int v);
    /// Shows the number of the slider.
    /// @param v pages
    void on_cachemode_page_num_valueChanged(int v);
    /// Shows the number and raises the power off time to it at least.
    /// @param v minutes
    void on_powersaving_time_valueChanged(int v);
    /// Shows the number and keeps it from falling below the power saving time.
    /// @param v minutes
    void on_poweroff_time_valueChanged(int v);
    /// Shows the preview button on the preview tab alone.
    /// @param index of the tab
    void on_tabWidget_currentChanged(int index);

    // Preview
    /// Scans a preview and shows it. Blocks until the scanner is done.
    void on_preview_clicked();
    /// Shows the selection drawn on the preview in millimetres.
    /// @param rect in pixels of the preview
    /// @param standard pixels per 20 mm; 0 gives lengths of 0
    void getSelectedRect(QRect rect, int standard);
    /// Moves the left edge of the selection, within the picture.
    /// @param v millimetres
    void on_offset_x_valueChanged(double v);
    /// Moves the top edge of the selection, within the picture.
    /// @param v millimetres
    void on_offset_y_valueChanged(double v);
    /// Changes the width of the selection, within the picture.
    /// @param v millimetres
    void on_offset_w_valueChanged(double v);
    /// Changes the height of the selection, within the picture.
    /// @param v millimetres
    void on_offset_h_valueChanged(double v);
    /// Makes the selection a paper size.
    /// @param index not used: the text on show decides
    void on_preview_scanrange_currentIndexChanged(int index);
    /// Turns the selection.
    /// @param id not used: the checked orientation decides
    void previewRangeGroup(int id);

    /// @cond INTERNAL
protected:
    void closeEvent(QCloseEvent* event) override;

    // State shared by the topics; protected so that tests can look at it through a subclass.
    std::unique_ptr<Ui_KestrelSetting> ui;
    SANE_Handle sane_handle = nullptr;     ///< the host's; null until bound
    QSettings* settings = nullptr;         ///< null until bound; never deleted, see set_device()
    EditTemplate* edit_template = nullptr; ///< child
    CustomResolution* custom_resolution = nullptr; ///< child

    QString save_path;
    QString config_path;
    QString device_name;
    QString backend_name;
    QString vendor_lib_path;
    std::uint32_t vid = 0;
    std::uint32_t pid = 0;

    QString system_text;  ///< host system information
    QString serial_text;  ///< serial number line
    QString counter_text; ///< counter lines
    kestrel::VendorDriver vendor_driver;
    kestrel::RollerCounters counters;

    bool double_side = false;
    bool use_preview_area = false;
    bool preview_selected = false; ///< the user has made a selection in the preview
    QRect preview_rect;            ///< that selection, in preview pixels
    int scan_source_type = 0;
    kestrel::SideMode multistream_mask; ///< front colour until something is loaded
    std::array<int, 256> gamma_table{};

    int device_kind = -1; ///< 0 flatbed first, 1 feeder first, 2 automatic, -1 unknown
    int has_both_paths = 0;
    int flatbed_max_length = 0; ///< mm
    int source_option = 0;      ///< index of the option "source"
    int br_y_option = 0;        ///< index of the option "br-y"
    int long_paper_option = 0;  ///< index of the option "long-paper-scan"
    bool long_paper_available = false;
    SANE_Fixed long_paper_max_height = 0;
    SANE_Fixed normal_max_height = 0;
    bool flatbed_multi_crop = false;

    bool previewing = false;           ///< a preview scan is under way
    bool showing_gamma = false;        ///< the gamma spin box is being written, not typed in
    bool configuration_loaded = false; ///< the controls hold what the settings file says
    bool half_asked = false;           ///< the scanner did not tell all at the binding
    bool half_described = false;       ///< nor was that its way: it may tell more the next time
    bool updating = false; ///< update guard: the rules are writing the spin boxes themselves
    bool portrait = true;  ///< orientation flag

private:
    class Q_DECL_HIDDEN Discovery;
    struct Q_DECL_HIDDEN TemplateRecord;

    using StoredSetting = std::pair<const kestrel::Setting*, QString>;

    struct Limits
    {
        QWidget* control;
        QVariant minimum;
        QVariant maximum;
    };
    std::vector<Limits> form_limits;          ///< of the controls that a scanner limits
    std::vector<StoredSetting> form_settings; ///< what the form gives for each setting
    std::optional<QString> discovered_name;   ///< the device whose options were walked over last
    unsigned binding_count = 0;               ///< tells whether a question outlived its scanner

    mutable QHash<QString, QWidget*> setting_controls; ///< controls of settings by object name

    struct LoadedText
    {
        QString stored;
        QString shown; ///< what the control made of it
        bool is_stored = true;
    };
    QHash<const kestrel::Setting*, LoadedText> loaded_texts; ///< kept while half_asked

    Q_DECL_HIDDEN void assignButtonIds();
    Q_DECL_HIDDEN void connectSignals();
    Q_DECL_HIDDEN void rememberFormLimits();
    Q_DECL_HIDDEN void rememberFormSettings();
    Q_DECL_HIDDEN void loadFormSettings();
    Q_DECL_HIDDEN bool acceptPreviewArea();
    Q_DECL_HIDDEN void showScannerInfo();
    Q_DECL_HIDDEN void openSettings(const QString& name, const char* config_dir);
    Q_DECL_HIDDEN void saveSelectedTemplate();
    Q_DECL_HIDDEN void reloadConfirmed();
    Q_DECL_HIDDEN QString versionGroup() const;
    Q_DECL_HIDDEN int notedVersion() const;
    Q_DECL_HIDDEN bool isVersionNoted() const;
    Q_DECL_HIDDEN bool confirmVersion();
    Q_DECL_HIDDEN void noteVersion(bool defaults_known);
    Q_DECL_HIDDEN bool areDefaultsInDoubt() const;
    Q_DECL_HIDDEN void keepFirstState();
    Q_DECL_HIDDEN void forgetTouched();
    Q_DECL_HIDDEN void noteStoredTexts(const QString& group);
    Q_DECL_HIDDEN void startConfiguration();
    Q_DECL_HIDDEN QWidget* control(const kestrel::Setting& setting) const;
    Q_DECL_HIDDEN QString settingText(const kestrel::Setting& setting) const;
    Q_DECL_HIDDEN std::optional<QString> textToStore(const kestrel::Setting& setting) const;
    Q_DECL_HIDDEN void loadSetting(const kestrel::Setting& setting, const QString& text);
    Q_DECL_HIDDEN void loadGroup(const QString& group);
    Q_DECL_HIDDEN void loadSideMode(kestrel::SideMode mask);
    Q_DECL_HIDDEN void mendSideMode(const StoredSetting& first);
    Q_DECL_HIDDEN void mendBounded(const std::vector<StoredSetting>& stored);
    Q_DECL_HIDDEN void loadCentering(bool on);
    Q_DECL_HIDDEN void storeGroup(const QString& group, bool defaults);
    Q_DECL_HIDDEN TemplateRecord readTemplates() const;
    Q_DECL_HIDDEN void notePresets();
    Q_DECL_HIDDEN void showTemplates(bool bound_before);
    Q_DECL_HIDDEN bool listTemplates();
    Q_DECL_HIDDEN void updateCropList();
    Q_DECL_HIDDEN void clearBackSide();
    Q_DECL_HIDDEN void showGamma(double gamma);
    Q_DECL_HIDDEN kestrel::ScanRange scanRange() const;
    Q_DECL_HIDDEN SANE_Status scanPreview();
    Q_DECL_HIDDEN void showFrame(kestrel::Frame frame);
    Q_DECL_HIDDEN void previewOffsetEdited(QDoubleSpinBox* offset, double v,
                                           const QDoubleSpinBox* extent);
    Q_DECL_HIDDEN void previewExtentEdited(QDoubleSpinBox* extent, double v,
                                           const QDoubleSpinBox* offset);
    Q_DECL_HIDDEN kestrel::PreviewRange previewRange() const;
    Q_DECL_HIDDEN void writePreviewArea(const kestrel::AreaMm& area);
    Q_DECL_HIDDEN void write(const std::vector<kestrel::RangeWrite>& writes);
    Q_DECL_HIDDEN void send(const char* name, const QString& value);
    Q_DECL_HIDDEN void send(const char* name, const std::optional<QString>& value);
    Q_DECL_HIDDEN void sendSource();
    Q_DECL_HIDDEN void sendMode();
    Q_DECL_HIDDEN void sendImage();
    Q_DECL_HIDDEN void sendColorDetection();
    Q_DECL_HIDDEN void sendScanArea();
    Q_DECL_HIDDEN void sendPaperHandling();
    Q_DECL_HIDDEN void sendImageProcessing();
    Q_DECL_HIDDEN void sendCache();
    Q_DECL_HIDDEN std::optional<kestrel::ScanSource> currentSource() const;
    /// @endcond
};
