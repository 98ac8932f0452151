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
    explicit KestrelSettingUI(QWidget* parent = nullptr);
    ~KestrelSettingUI() override;
    KestrelSettingUI(const KestrelSettingUI&) = delete;
    KestrelSettingUI& operator=(const KestrelSettingUI&) = delete;

    // Life cycle and host interface (kestrelsetting.cpp)
    void init_config();
    bool set_device(void* handle);
    bool set_device(void* handle, void* identity, const char* config_dir);
    void reset_preview();
    int get_color_correction();
    int get_scan_source_type();
    int get_waiting_job_time();
    bool is_double_side_scan();
    bool is_split_scan();

    // System information (kestrelsetting_maintenance.cpp)
    void getOsInfo();
    void getCpuInfo();
    void getMemoryInfo();

    // Talking to the scanner (_discovery, _apply, _maintenance)
    int GetOptionByName();
    unsigned int kst_SetParam(const char* name, const char* value);
    bool SetupGammaTable1(int* table, double gamma);
    bool set_blank_page_func(bool on);
    void setAllParam();
    void setParamForPreview();
    void scan_error(SANE_Status status);
    void getScannerRollerCount();
    void setScannerInfo();
    void lockFunctionByVid(unsigned int vid, const char* backend);
    void setPowerManager();

    // Settings file and templates (_configuration, _templates)
    void setsavepath(char* path);
    void writeDefaultConfig(QString group);
    void writeConfig(QString group);
    void loadConfig(QString group);
    int setButtonTemplage(int n);

    // Rules and preview (_mode, _resolution, _preview)
    void color_detection_image();
    int get_resolution();
    void setMoveRect();
    void setSelectedRect();

public slots:
    // Buttons of the dialog (kestrelsetting.cpp)
    void on_sure_clicked();
    void on_cancel_clicked();
    void reject() override;

    // Maintenance
    void on_eject_paper_manual_clicked();

    // Templates
    void on_usertemplate_currentIndexChanged(int index);
    void on_default_setting_clicked();
    void on_template_setting_clicked();
    void addUserTemplateConfig(QString name);
    void resetCurrentUserTemplate(bool reset);

    // Scan source
    void on_source_currentIndexChanged(int index);

    // Scan range and paper size
    void on_scanrange_setting_currentIndexChanged(int index);
    void testGroup(int id);
    void on_center_alignment_toggled(bool on);
    void on_tl_x_valueChanged(double v);
    void on_tl_y_valueChanged(double v);
    void on_br_x_valueChanged(double v);
    void on_br_y_valueChanged(double v);

    // Image mode, multistream and colour
    void setMultistream(int id);
    void on_color_detection_image_front_toggled(bool on);
    void on_color_detection_image_back_toggled(bool on);
    void on_binarization_currentIndexChanged(int index);
    void on_gamma_set_valueChanged(int v);
    void on_gamma_value_valueChanged(double g);
    void on_color_dropout_currentIndexChanged(int index);

    // Resolution
    void on_customresolution_clicked();
    void getCustomResolution(QString text);

    // Paper handling, image processing, cache, power
    void on_autocropdeskew_currentIndexChanged(int index);
    void on_rotate_currentIndexChanged(int index);
    void on_background_processing_currentIndexChanged(int index);
    void on_blankpage_threshold_valueChanged(int v);
    void on_background_processing_sensitivity_valueChanged(int v);
    void on_despeckle_dotsnumber_valueChanged(int n);
    void on_long_paper_scan_toggled(bool on);
    void on_cachemode_currentIndexChanged(int index);
    void on_cachemode_value_valueChanged(int v);
    void on_cachemode_image_num_valueChanged(int v);
    void on_cachemode_page_num_valueChanged(int v);
    void on_powersaving_time_valueChanged(int v);
    void on_poweroff_time_valueChanged(int v);
    void on_tabWidget_currentChanged(int index);

    // Preview
    void on_preview_clicked();
    void getSelectedRect(QRect rect, int standard);
    void on_offset_x_valueChanged(double v);
    void on_offset_y_valueChanged(double v);
    void on_offset_w_valueChanged(double v);
    void on_offset_h_valueChanged(double v);
    void on_preview_scanrange_currentIndexChanged(int index);
    void previewRangeGroup(int id);

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
    std::vector<Limits> form_limits; ///< of the controls that a scanner limits

    mutable QHash<QString, QWidget*> setting_controls; ///< controls of settings by object name

    Q_DECL_HIDDEN void assignButtonIds();
    Q_DECL_HIDDEN void connectSignals();
    Q_DECL_HIDDEN void rememberFormLimits();
    Q_DECL_HIDDEN bool acceptPreviewArea();
    Q_DECL_HIDDEN void showScannerInfo();
    Q_DECL_HIDDEN void openSettings(const char* config_dir);
    Q_DECL_HIDDEN void saveSelectedTemplate();
    Q_DECL_HIDDEN void reloadConfirmed();
    Q_DECL_HIDDEN void startConfiguration();
    Q_DECL_HIDDEN QWidget* control(const kestrel::Setting& setting) const;
    Q_DECL_HIDDEN QString settingText(const kestrel::Setting& setting) const;
    Q_DECL_HIDDEN void loadSetting(const kestrel::Setting& setting, const QString& text);
    Q_DECL_HIDDEN void loadSideMode(kestrel::SideMode mask);
    Q_DECL_HIDDEN void mendSideMode(const StoredSetting& first);
    Q_DECL_HIDDEN void mendBounded(const std::vector<StoredSetting>& stored);
    Q_DECL_HIDDEN void loadCentering(bool on);
    Q_DECL_HIDDEN void storeGroup(const QString& group, bool defaults);
    Q_DECL_HIDDEN TemplateRecord readTemplates() const;
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
};
