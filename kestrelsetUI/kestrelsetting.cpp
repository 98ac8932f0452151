// Construction, binding, OK / Cancel / close, and what the host asks.
#include "kestrelsetting.h"

#include "dialogs/customresolution.h"
#include "dialogs/edittemplate.h"
#include "kestrelsettingui.h"
#include "rules/side_mode.h"
#include "scanner/value_tables.h"
#include "settings/settings_file.h"
#include "ui_kestrelsetting.h"
#include "widgets/group_focus.h"
#include "widgets/screen_fit.h"
#include "widgets/screen_reader.h"

#include <QCloseEvent>
#include <QMessageBox>
#include <QPointer>
#include <QSettings>

#include <cstring>

using namespace kestrel;

namespace {

constexpr int kSeparationTab = 7;
constexpr int kDefaultColorCorrection = 2;
constexpr double kSmallestPreviewAreaMm = 15.0;

/// The text of a fixed-size field of the host's record, terminated or not.
template <std::size_t Size>
QByteArray field(const char (&text)[Size])
{
    return {text, static_cast<int>(strnlen(text, Size))};
}

} // namespace

KestrelSettingUI::KestrelSettingUI(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui_KestrelSetting>())
{
    ui->setupUi(this);
    describeAfresh(*this);
    rememberFormLimits();
    save_path = QStringLiteral("/tmp/");
    ui->tabWidget->setCurrentIndex(0);
    SetupGammaTable1(gamma_table.data(), 1.0);
    getOsInfo();
    getCpuInfo();
    getMemoryInfo();
    showScannerInfo();
    ui->test_button->hide();
    assignButtonIds();
    ui->preview->hide();
    edit_template = new EditTemplate(this);
    custom_resolution = new CustomResolution(this);
    ui->color_correction->setCurrentIndex(kDefaultColorCorrection);
    init_config();
    connectSignals();
    rememberFormSettings();
    new GroupFocus(*this);
    new ScreenFit({*this, *ui->scrollArea, *ui->tabWidget, *ui->widget_13});
}

// The settings object stays behind on purpose, see openSettings().
KestrelSettingUI::~KestrelSettingUI()
{
    saveLeftOvers(settings, savePatience);
}

void KestrelSettingUI::assignButtonIds()
{
    const auto assign = [](QButtonGroup* group, std::initializer_list<QAbstractButton*> buttons) {
        int id = 0;
        for (auto* button : buttons) {
            group->setId(button, id++);
        }
    };
    assign(ui->buttonGroup_multistream, {ui->front_bw, ui->front_gray, ui->front_color, ui->rear_bw,
                                         ui->rear_gray, ui->rear_color});
    assign(ui->buttonGroup_multistream_dropout,
           {ui->front_bw_dropout, ui->front_gray_dropout, ui->front_color_dropout,
            ui->rear_bw_dropout, ui->rear_gray_dropout, ui->rear_color_dropout});
    assign(ui->buttonGroup_range, {ui->horizontal_range, ui->vertical_range});
    assign(ui->buttonGroup_Vertical, {ui->horizontal_range_preview, ui->vertical_range_preview});
}

void KestrelSettingUI::init_config()
{
    ui->background_setting_widget->hide();
    ui->groupBox_image_contral->hide();
    ui->groupBox_add_frame->hide();
    ui->pushButton_custum->hide();
    ui->widget_dropout->hide();
    ui->tabWidget->setTabText(kSeparationTab, tr(""));
    ui->tabWidget->setTabEnabled(kSeparationTab, false);
    ui->scan_waitingjob_widget->hide();
}

void KestrelSettingUI::connectSignals()
{
    using Self = KestrelSettingUI;
    const auto clicked = [this](const QButtonGroup* group, const char* slot) {
        connect(group, SIGNAL(buttonClicked(int)), this, slot);
    };
    connect(ui->preview_box, &PreviewBoxUI::selected, this, &Self::getSelectedRect);
    // Either detection can stop the scan; a form can only say one of them.
    const auto follow = [this] {
        ui->stop_scanning_after_multifeed->setEnabled(ui->ultrasonic->isChecked() ||
                                                      ui->length_detection->isChecked());
    };
    connect(ui->ultrasonic, &QAbstractButton::toggled, this, follow);
    connect(ui->length_detection, &QAbstractButton::toggled, this, follow);
    clicked(ui->buttonGroup_multistream, SLOT(setMultistream(int)));
    clicked(ui->buttonGroup_multistream_dropout, SLOT(setMultistream(int)));
    clicked(ui->buttonGroup_range, SLOT(testGroup(int)));
    clicked(ui->buttonGroup_Vertical, SLOT(previewRangeGroup(int)));
    connect(edit_template, &EditTemplate::addUserTemplate, this, &Self::addUserTemplateConfig);
    connect(edit_template, &EditTemplate::resetCurrentUserTemplate, this,
            &Self::resetCurrentUserTemplate);
    connect(custom_resolution, &CustomResolution::getCustomResolution, this,
            &Self::getCustomResolution);
}

bool KestrelSettingUI::set_device(void* handle)
{
    if (handle == nullptr) {
        return false;
    }
    sane_handle = handle;
    return true;
}

bool KestrelSettingUI::set_device(void* handle, void* identity, const char* config_dir)
{
    if (handle == nullptr) {
        return false;
    }
    // A host without a record still gets its scanner; there is only no name to keep settings under.
    const ScannerIdentity nobody{};
    const auto& record =
        identity != nullptr ? *static_cast<const ScannerIdentity*>(identity) : nobody;
    const QByteArray backend = field(record.backend);
    openSettings(QString::fromUtf8(field(record.name)), config_dir);
    // Until the scanner has told all, what its file holds is not for the controls to say.
    configuration_loaded = false;
    half_asked = true;
    loaded_texts.clear();
    vid = record.vid;
    pid = record.pid;
    backend_name = QString::fromUtf8(backend);
    ui->long_paper_scan->show();
    lockFunctionByVid(vid, backend.constData());
    vendor_lib_path = QStringLiteral("/usr/local/lib64/sane/%1")
                          .arg(QStringLiteral("%1_x64.so.1.0").arg(device_name));
    vendor_driver.load(vendor_lib_path);
    sane_handle = handle;
    ++binding_count;
    GetOptionByName();
    return true;
}

void KestrelSettingUI::reset_preview()
{
    use_preview_area = false;
    ui->preview_box->cancelManualRectSet();
}

void KestrelSettingUI::on_sure_clicked()
{
    saveSelectedTemplate();
    if (ui->offset_w->value() > 0.0 && ui->offset_h->value() > 0.0) {
        const QPointer<KestrelSettingUI> alive(this);
        const bool finished = acceptPreviewArea();
        if (alive.isNull() || !finished) {
            return;
        }
    }
    setPowerManager();
    hide();
}

/// Asks whether the area drawn on the preview is to be scanned.
/// @return false when the dialog is to stay open
bool KestrelSettingUI::acceptPreviewArea()
{
    // A box lets the host delete the dialog, or bind another scanner, which nobody was asked about.
    const auto is_answered = [alive = QPointer<KestrelSettingUI>(this), asked_at = binding_count] {
        return !alive.isNull() && alive->binding_count == asked_at;
    };
    const auto answer =
        QMessageBox::question(nullptr, tr("预览设置"), tr("是否使用预览中的设置的值？"),
                              QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes);
    if (!is_answered()) {
        return false;
    }
    if (answer != QMessageBox::Yes) {
        reset_preview();
        return true;
    }
    if (ui->offset_w->value() >= kSmallestPreviewAreaMm &&
        ui->offset_h->value() >= kSmallestPreviewAreaMm) {
        use_preview_area = true;
        return true;
    }
    QMessageBox::critical(nullptr, QStringLiteral("提示"),
                          QStringLiteral("所选择的区域不能小于 15.0x15.0 毫米"));
    if (!is_answered()) {
        return false;
    }
    for (auto* const side : {ui->offset_w, ui->offset_h}) {
        if (side->value() < kSmallestPreviewAreaMm) {
            side->setValue(kSmallestPreviewAreaMm);
        }
    }
    return false;
}

void KestrelSettingUI::on_cancel_clicked()
{
    close();
}

// Escape must throw unsaved edits away like every other way of closing.
void KestrelSettingUI::reject()
{
    close();
}

void KestrelSettingUI::closeEvent(QCloseEvent* event)
{
    reloadConfirmed();
    saveLeftOvers(settings, std::chrono::milliseconds::zero());
    event->accept();
}

int KestrelSettingUI::get_color_correction()
{
    return ui->color_correction->currentIndex();
}

int KestrelSettingUI::get_scan_source_type()
{
    return scan_source_type;
}

int KestrelSettingUI::get_waiting_job_time()
{
    const auto* const flatbed = tables::at(tables::scanner_source, ScanSource::Flatbed);
    return ui->source->currentText() == QString::fromUtf8(flatbed) ? ui->waitingjob_value->value()
                                                                   : 0;
}

bool KestrelSettingUI::is_double_side_scan()
{
    return double_side;
}

bool KestrelSettingUI::is_split_scan()
{
    return ui->split_image->currentIndex() != 0;
}
