// The form's own signals and slots, each with its effect, in both directions.
#include "dialog/form/form.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QCheckBox>
#include <QMetaProperty>
#include <QSpinBox>
#include <QStringList>

#include <algorithm>

using kestrel::test::Form;

namespace {

struct Pair
{
    const char* one;
    const char* other;
};

const Pair checkTwins[] = {
    {"front_bw", "front_bw_dropout"},
    {"front_gray", "front_gray_dropout"},
    {"front_color", "front_color_dropout"},
    {"rear_bw", "rear_bw_dropout"},
    {"rear_gray", "rear_gray_dropout"},
    {"rear_color", "rear_color_dropout"},
    {"color_detection_checkbox", "color_detection_image_front"},
    {"color_detection_checkbox_2", "color_detection_image_back"},
};

const Pair valueTwins[] = {
    {"brightness_set", "brightness_balue"},
    {"contrast_set", "contrast_balue"},
    {"binarization_value", "spinBox_9"},
    {"gray_value", "spinBox_11"},
    {"acd_sensitivity_front", "acd_sensitivity_front_value"},
    {"acd_sensitivity_back", "acd_sensitivity_back_value"},
    {"waitingjob_time", "waitingjob_value"},
};

/// A check box and what is enabled while it is checked.
const Pair enabling[] = {
    {"prefeed", "prefeed_time"},
    {"length_detection", "length_detection_value"},
    {"remove_blankpage", "blankpage_threshold"},
    {"despeckle", "despeckle_widget"},
    {"powersaving", "powersaving_time"},
    {"poweroff", "poweroff_time"},
};

/// A check box and what is disabled while it is checked.
const Pair disabling[] = {
    {"cachemode_use_default", "cachemode_widget"},
    {"cachemode_image_num_default", "cachemode_widget_image_num"},
};

/// Enabled in itself, whatever the panels around it are.
bool enabledItself(const QWidget& widget)
{
    return !widget.testAttribute(Qt::WA_ForceDisabled);
}

/// A picture of all states and values, to see what one action changed.
QStringList states(const Form& form)
{
    QStringList lines;
    for (const QWidget* widget : form.widgets()) {
        QString line = widget->objectName();
        line += enabledItself(*widget) ? QStringLiteral(" on") : QStringLiteral(" off");
        line += widget->isHidden() ? QStringLiteral(" hidden") : QString();
        for (const char* property : {"checked", "value", "minimum", "maximum", "currentIndex"}) {
            const QVariant value = widget->property(property);
            if (value.isValid()) {
                line += QLatin1Char(' ') + QLatin1String(property) + QLatin1Char('=') +
                        value.toString();
            }
        }
        lines.append(line);
    }
    return lines;
}

/// @return the names of the widgets whose line differs, sorted
QStringList changed(const QStringList& before, const QStringList& after)
{
    QStringList names;
    for (int index = 0; index < before.size(); ++index) {
        if (before[index] != after[index]) {
            names.append(after[index].section(QLatin1Char(' '), 0, 0));
        }
    }
    names.sort();
    return names;
}

QStringList sorted(QStringList names)
{
    names.sort();
    return names;
}

/// A dialog whose by-name slots look at the twin of what has changed.
class Watcher : public QDialog
{
    Q_OBJECT

public:
    Watcher() { ui.setupUi(this); }

    Ui_KestrelSetting ui{};
    int calls = 0;
    bool equal = true;

public slots:
    void on_front_bw_toggled(bool on) { see(ui.front_bw_dropout->isChecked() == on); }
    void on_front_bw_dropout_toggled(bool on) { see(ui.front_bw->isChecked() == on); }
    void on_color_detection_image_front_toggled(bool on)
    {
        see(ui.color_detection_checkbox->isChecked() == on);
    }
    void on_brightness_set_valueChanged(int v) { see(ui.brightness_balue->value() == v); }
    void on_waitingjob_value_valueChanged(int v) { see(ui.waitingjob_time->value() == v); }

private:
    void see(bool same)
    {
        ++calls;
        equal = equal && same;
    }
};

} // namespace

TEST(FormWiring, CheckTwinsFollowEachOtherBothWays)
{
    for (const Pair& pair : checkTwins) {
        SCOPED_TRACE(pair.one);
        Form form;
        auto& one = form.get<QAbstractButton>(pair.one);
        auto& other = form.get<QAbstractButton>(pair.other);
        ASSERT_EQ(one.isChecked(), other.isChecked());
        for (const bool on : {true, false, true}) {
            one.setChecked(on);
            EXPECT_EQ(other.isChecked(), on);
        }
        for (const bool on : {false, true, false}) {
            other.setChecked(on);
            EXPECT_EQ(one.isChecked(), on);
        }
    }
}

TEST(FormWiring, CheckTwinsMoveNothingElse)
{
    for (const Pair& pair : checkTwins) {
        SCOPED_TRACE(pair.one);
        Form form;
        const QStringList before = states(form);
        auto& one = form.get<QAbstractButton>(pair.one);
        one.setChecked(!one.isChecked());
        EXPECT_EQ(changed(before, states(form)),
                  sorted({QLatin1String(pair.one), QLatin1String(pair.other)}));
    }
}

TEST(FormWiring, ValueTwinsFollowEachOtherBothWays)
{
    for (const Pair& pair : valueTwins) {
        SCOPED_TRACE(pair.one);
        Form form;
        auto& bar = form.get<QAbstractSlider>(pair.one);
        auto& box = form.get<QSpinBox>(pair.other);
        ASSERT_EQ(bar.minimum(), box.minimum());
        ASSERT_EQ(bar.maximum(), box.maximum());
        ASSERT_EQ(bar.value(), box.value());
        const QStringList before = states(form);
        for (const int value : {bar.maximum(), bar.minimum(), bar.minimum() + 7}) {
            bar.setValue(value);
            EXPECT_EQ(box.value(), value);
        }
        EXPECT_EQ(changed(before, states(form)),
                  sorted({QLatin1String(pair.one), QLatin1String(pair.other)}));
        for (const int value : {box.maximum(), box.minimum(), box.minimum() + 3}) {
            box.setValue(value);
            EXPECT_EQ(bar.value(), value);
        }
    }
}

TEST(FormWiring, CheckBoxesEnableWhatTheyGovern)
{
    for (const Pair& pair : enabling) {
        SCOPED_TRACE(pair.one);
        Form form;
        auto& box = form.get<QCheckBox>(pair.one);
        const QWidget& governed = form.get(pair.other);
        EXPECT_EQ(enabledItself(governed), box.isChecked());
        for (const bool on : {!box.isChecked(), box.isChecked()}) {
            box.setChecked(on);
            EXPECT_EQ(enabledItself(governed), on);
        }
    }
}

TEST(FormWiring, DefaultBoxesDisableWhatTheyReplace)
{
    for (const Pair& pair : disabling) {
        SCOPED_TRACE(pair.one);
        Form form;
        auto& box = form.get<QCheckBox>(pair.one);
        const QWidget& governed = form.get(pair.other);
        EXPECT_EQ(enabledItself(governed), !box.isChecked());
        for (const bool on : {false, true}) {
            box.setChecked(on);
            EXPECT_EQ(enabledItself(governed), !on);
        }
    }
}

TEST(FormWiring, PanelsFollowTheModeButton)
{
    struct Row
    {
        const char* button;
        QStringList enabled;
    };
    const QStringList color = {"color_widget", "color_correction_widget"};
    const QStringList gray = {"gray_widget"};
    const QStringList lineart = {"binarization_widget", "despeckle_groupBox"};
    const Row rows[] = {
        {"color_front_image", color},
        {"color_back_image", color},
        {"gray_front_image", gray},
        {"gray_back_image", gray},
        {"lineart_front_image", lineart},
        {"lineart_back_image", lineart},
        {"test_button", {}},
    };
    Form form;
    // From every button to every other: what the earlier one left must not show.
    for (const Row& from : rows) {
        for (const Row& to : rows) {
            SCOPED_TRACE(std::string(from.button) + " -> " + to.button);
            form.get<QAbstractButton>(from.button).setChecked(true);
            form.get<QAbstractButton>(to.button).setChecked(true);
            for (const QString& panel : color + gray + lineart) {
                EXPECT_EQ(enabledItself(form.get(panel)), to.enabled.contains(panel))
                    << panel.toStdString();
            }
        }
    }
}

TEST(FormWiring, GrayThresholdStaysOffInsideItsPanel)
{
    Form form;
    form.ui.gray_front_image->setChecked(true);
    EXPECT_TRUE(form.ui.gray_doc_type->isEnabled());
    EXPECT_FALSE(form.ui.gray_value->isEnabled());
    EXPECT_FALSE(form.ui.spinBox_11->isEnabled());
}

TEST(FormWiring, NoOtherControlMovesAnything)
{
    const auto wired = [](const QString& name) {
        const auto names = [&name](const Pair& pair) {
            return name == QLatin1String(pair.one) || name == QLatin1String(pair.other);
        };
        return std::any_of(std::begin(checkTwins), std::end(checkTwins), names) ||
               std::any_of(std::begin(valueTwins), std::end(valueTwins), names) ||
               std::any_of(std::begin(enabling), std::end(enabling), names) ||
               std::any_of(std::begin(disabling), std::end(disabling), names);
    };
    Form form;
    for (QWidget* const widget : form.widgets()) {
        if (wired(widget->objectName())) {
            continue;
        }
        const QStringList before = states(form);
        if (auto* const check = qobject_cast<QCheckBox*>(widget)) {
            check->toggle();
        } else if (widget->property("value").isValid()) {
            widget->setProperty("value", widget->property("maximum"));
        } else {
            continue;
        }
        const QStringList moved = changed(before, states(form));
        EXPECT_EQ(moved, QStringList(widget->objectName()));
    }
}

TEST(FormWiring, TwinsAreEqualBeforeSlotsByNameRun)
{
    Watcher watcher;
    watcher.ui.front_bw->toggle();
    watcher.ui.rear_bw->toggle();
    watcher.ui.color_detection_image_front->toggle();
    watcher.ui.brightness_set->setValue(33);
    watcher.ui.waitingjob_value->setValue(44);
    EXPECT_EQ(watcher.calls, 5);
    EXPECT_TRUE(watcher.equal);
}

#include "wiring_test.moc"
