/// @file
/// The scan-settings dialog.
#pragma once

#include <QDialog>
#include <QMap>
#include <QRect>
#include <QString>

#include <sane/sane.h>

#include <array>
#include <cstdint>

class CustomResolution;
class EditTemplate;
class QSettings;
class Ui_KestrelSetting;

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
    Ui_KestrelSetting* ui = nullptr;       ///< owned
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
    std::uint32_t separation_roller_count = 0;
    std::uint32_t feed_roller_count = 0;
    std::uint32_t flatbed_scan_count = 0;

    bool double_side = false;
    bool use_preview_area = false;
    bool preview_selected = false; ///< the user has made a selection in the preview
    QRect preview_rect;            ///< that selection, in preview pixels
    int scan_source_type = 0;
    std::uint8_t multistream_mask = 4; ///< side-mode mask, see rules/side_mode.h
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

    bool updating = false; ///< update guard: the rules are writing the spin boxes themselves
    bool portrait = true;  ///< orientation flag
};
