// The order in which controls change while a configuration is loaded.
#include "config_bench.h"
#include "config_sequence.h"

using namespace kestrel;
using namespace kestrel::test;

namespace {

/// Writes down every change of every control on the tabs, as "name=value".
class Changes
{
public:
    explicit Changes(QWidget& tabs)
    {
        for (auto* const list : tabs.findChildren<QComboBox*>()) {
            watch(list, qOverload<int>(&QComboBox::currentIndexChanged));
        }
        for (auto* const button : tabs.findChildren<QAbstractButton*>()) {
            watch(button, &QAbstractButton::toggled);
        }
        for (auto* const bar : tabs.findChildren<QAbstractSlider*>()) {
            watch(bar, &QAbstractSlider::valueChanged);
        }
        for (auto* const spin : tabs.findChildren<QSpinBox*>()) {
            watch(spin, qOverload<int>(&QSpinBox::valueChanged));
        }
        for (auto* const real : tabs.findChildren<QDoubleSpinBox*>()) {
            watch(real, qOverload<double>(&QDoubleSpinBox::valueChanged));
        }
    }

    std::vector<std::string> take() { return std::exchange(m_lines, {}); }

private:
    template <typename Control, typename Signal>
    void watch(Control* control, Signal signal)
    {
        // Parts of other widgets, such as the bars of a text field, carry the toolkit's names.
        if (control->objectName().isEmpty() ||
            control->objectName().startsWith(QLatin1String("qt_"))) {
            return;
        }
        m_connections.push_back(std::make_unique<Connection>(
            QObject::connect(control, signal, [this, control](auto value) {
                m_lines.push_back(
                    (control->objectName() + QLatin1Char('=') + QString::number(value))
                        .toStdString());
            })));
    }

    struct Connection
    {
        explicit Connection(QMetaObject::Connection made) : connection(std::move(made)) {}
        ~Connection() { QObject::disconnect(connection); }
        Q_DISABLE_COPY_MOVE(Connection)
        QMetaObject::Connection connection;
    };
    std::vector<std::unique_ptr<Connection>> m_connections;
    std::vector<std::string> m_lines;
};

class LoadingSequence : public SettingsBench
{
protected:
    LoadingSequence() : m_scanner(fullScanner())
    {
        bind(m_scanner);
        for (const auto& [key, text] : otherSettings()) {
            store(QStringLiteral("L/") + QLatin1String(key), QLatin1String(text));
        }
    }

    FakeScanner m_scanner;
};

} // namespace

TEST_F(LoadingSequence, ControlsChangeInReadingOrder)
{
    Changes changes(tabs());
    dialog().loadConfig(QStringLiteral("L"));
    EXPECT_EQ(changes.take(), toTheOther);
    dialog().loadConfig(QStringLiteral("ScannerA"));
    EXPECT_EQ(changes.take(), backToTheFirst);
}

TEST_F(LoadingSequence, WhatIsThereAlreadyDoesNotChange)
{
    dialog().loadConfig(QStringLiteral("L"));
    Changes changes(tabs());
    dialog().loadConfig(QStringLiteral("ScannerA"));
    changes.take();
    dialog().loadConfig(QStringLiteral("ScannerA"));
    EXPECT_EQ(changes.take(), std::vector<std::string>{});
}

TEST_F(LoadingSequence, TheNextStartChangesInTheSameOrder)
{
    press(get<QAbstractButton>("sure"));
    const QStringList first = state();
    dialog().loadConfig(QStringLiteral("L"));
    const QStringList other = state();
    ASSERT_FALSE(first == other);
    press(get<QAbstractButton>("sure"));
    restart(m_scanner);
    expectState(other);
}

TEST_F(LoadingSequence, EveryOtherSettingIsAnother)
{
    for (const Setting& setting : settingsTable()) {
        const QString key = QLatin1Char('/') + QLatin1String(setting.key);
        if (setting.inWorkingGroup()) {
            EXPECT_FALSE(held(QStringLiteral("L") + key).isEmpty()) << setting.key;
            EXPECT_NE(held(QStringLiteral("L") + key), held(QStringLiteral("ScannerA") + key))
                << setting.key;
        }
    }
}
