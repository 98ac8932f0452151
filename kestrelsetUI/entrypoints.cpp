// What hosts resolve by name: one line of forwarding each.
#include "kestrelsettingui.h"

#include "kestrelsetting.h"
#include "rules/pixels.h"

#include <QWidget>

const char* const kestrel_model_names[3] = {"Q1410A", "Q2380F", "Q150A"};
const char* const kestrel_model_product_ids[3] = {"c141", "c238", "c150"};

namespace {

KestrelSettingUI& dialog(void* ui)
{
    return *static_cast<KestrelSettingUI*>(ui);
}

/// No exception leaves an exported function.
template <typename Call, typename Result>
Result guarded(Call call, Result otherwise) noexcept
{
    try {
        return call();
    } catch (...) {
        return otherwise;
    }
}

template <typename Call>
void guarded(Call call) noexcept
{
    try {
        call();
    } catch (...) { // nobody to tell: the host sees the dialog as it was
    }
}

} // namespace

void* creatKestrelSetUI(void* parent)
{
    return guarded([&]() -> void* { return new KestrelSettingUI(static_cast<QWidget*>(parent)); },
                   static_cast<void*>(nullptr));
}

void initKestrelSetUI(void* ui, void* sane_handle, void* identity, const char* config_dir)
{
    guarded([&] { dialog(ui).set_device(sane_handle, identity, config_dir); });
}

void setDevice(void* ui, void* sane_handle)
{
    guarded([&] { dialog(ui).set_device(sane_handle); });
}

int showWindow(void* ui)
{
    return guarded(
        [&] {
            dialog(ui).reset_preview();
            return dialog(ui).exec();
        },
        0);
}

void setAllParamBySettingUI(void* ui)
{
    guarded([&] { dialog(ui).setAllParam(); });
}

int setButtonTemplage(void* ui, int index)
{
    return guarded([&] { return dialog(ui).setButtonTemplage(index); }, 0);
}

int getCurrentResolution(void* ui)
{
    return guarded([&] { return dialog(ui).get_resolution(); }, 0);
}

int getCurrentFiletype(void* ui)
{
    return guarded([&] { return dialog(ui).get_color_correction(); }, 0);
}

int getScanSourceType(void* ui)
{
    return guarded([&] { return dialog(ui).get_scan_source_type(); }, 0);
}

// A fixed answer that hosts count on.
int isSingleScan(void* /*ui*/)
{
    return 0;
}

int getWaitingJobTime(void* ui)
{
    return guarded([&] { return dialog(ui).get_waiting_job_time(); }, 0);
}

bool isDoubleSideScan(void* ui)
{
    return guarded([&] { return dialog(ui).is_double_side_scan(); }, false);
}

bool setBlankPageFunc(void* ui, bool on)
{
    return guarded([&] { return dialog(ui).set_blank_page_func(on); }, false);
}

bool isSplitScan(void* ui)
{
    return guarded([&] { return dialog(ui).is_split_scan(); }, false);
}

QString outGetStr(QString s)
{
    return guarded(
        [&] {
            auto* const probe = new KestrelSettingUI;
            probe->setWindowModality(Qt::NonModal);
            probe->show();
            return s + QStringLiteral(" hell");
        },
        QString());
}

unsigned char* RGB24TO32(unsigned char* rgb, int width, int height)
{
    return kestrel::rgb24To32(rgb, width, height);
}
