// Hosts whose locale writes numbers with a comma: what is sent and stored keeps its point.
#include "config_bench.h"

#include <QTemporaryDir>

#include <array>
#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

using namespace kestrel;
using namespace kestrel::test;

namespace {

using Sent = std::vector<std::pair<std::string, std::vector<unsigned char>>>;

/// A locale of the C library that has a comma, for systems without any: the compiled form of
/// LC_NUMERIC, as localedef writes it.
QByteArray commaLocale()
{
    constexpr std::uint32_t magic = 0x20031115U ^ static_cast<std::uint32_t>(LC_NUMERIC);
    const auto word = [](std::uint32_t number) {
        std::array<char, sizeof(number)> bytes{};
        std::memcpy(bytes.data(), &number, sizeof(number));
        return QByteArray(bytes.data(), static_cast<int>(bytes.size()));
    };
    // Decimal point, thousands separator, grouping, both characters again, coded character set.
    const std::vector<QByteArray> elements{
        QByteArray(",", 2), QByteArray(".", 2), QByteArray("\3\3", 3),
        word(','),          word('.'),          QByteArray("UTF-8", 6)};
    const auto count = static_cast<std::uint32_t>(elements.size());
    QByteArray head = word(magic) + word(count);
    const int start = head.size() + static_cast<int>(count) * 4;
    QByteArray data;
    for (const QByteArray& element : elements) {
        head += word(static_cast<std::uint32_t>(start + data.size()));
        data += element;
        data += QByteArray((4 - data.size() % 4) % 4, '\0');
    }
    return head + data;
}

/// The options set and their bytes; as text they would follow the locale themselves.
Sent sent(const FakeScanner& scanner)
{
    Sent sets;
    for (const Call& call : scanner.journal().of(CallKind::Set)) {
        sets.emplace_back(call.name, call.raw);
    }
    return sets;
}

/// Runs under each comma locale in turn; the system's where it has them, one of its own always.
class CommaLocale : public SettingsBench
{
protected:
    CommaLocale() : m_before(std::setlocale(LC_NUMERIC, nullptr)) {}
    ~CommaLocale() override
    {
        std::setlocale(LC_NUMERIC, m_before.c_str());
        unsetenv("LOCPATH");
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    template <typename Action>
    void underEach(const Action& action)
    {
        for (const char* const name : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8", "ru_RU.UTF-8"}) {
            if (std::setlocale(LC_NUMERIC, name) != nullptr) {
                run(name, action);
            }
        }
        ASSERT_TRUE(m_made.isValid());
        QDir(m_made.path()).mkdir(QStringLiteral("comma"));
        QFile file(m_made.filePath(QStringLiteral("comma/LC_NUMERIC")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(commaLocale());
        file.close();
        setenv("LOCPATH", m_made.path().toLocal8Bit().constData(), 1);
        ASSERT_NE(std::setlocale(LC_NUMERIC, "comma"), nullptr);
        run("comma", action);
    }

private:
    template <typename Action>
    void run(const char* name, const Action& action)
    {
        SCOPED_TRACE(name);
        // The C library itself must be under its spell, or nothing is proven.
        ASSERT_STREQ(std::localeconv()->decimal_point, ",");
        ASSERT_EQ(std::strtod("1,5", nullptr), 1.5);
        ASSERT_EQ(std::strtod("215.9", nullptr), 215.0);
        action();
        std::setlocale(LC_NUMERIC, m_before.c_str());
    }

    std::string m_before;
    QTemporaryDir m_made;
};

} // namespace

TEST_F(CommaLocale, ALengthIsSentToTheTenth)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    underEach([&] {
        scanner.clearJournal();
        EXPECT_EQ(dialog().kst_SetParam("br-x", "215.9"), SANE_STATUS_GOOD);
        const auto sets = scanner.journal().setCallsOf("br-x");
        ASSERT_EQ(sets.size(), 1U);
        SANE_Word word = 0;
        ASSERT_EQ(sets[0].raw.size(), sizeof(word));
        std::memcpy(&word, sets[0].raw.data(), sizeof(word));
        EXPECT_EQ(word, 14149222);
    });
}

TEST_F(CommaLocale, SignsAndSmallNumbersKeepTheirFraction)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    const std::vector<std::pair<const char*, SANE_Word>> rows{{"0.5", 32768},   {"-0.5", -32768},
                                                              {"-15", -983040}, {"0", 0},
                                                              {"1.25", 81920},  {".5", 32768}};
    underEach([&] {
        for (const auto& [text, expected] : rows) {
            scanner.clearJournal();
            EXPECT_EQ(dialog().kst_SetParam("crop-adjust-top", text), SANE_STATUS_GOOD) << text;
            const auto sets = scanner.journal().setCallsOf("crop-adjust-top");
            ASSERT_EQ(sets.size(), 1U) << text;
            SANE_Word word = -1;
            std::memcpy(&word, sets[0].raw.data(), sizeof(word));
            EXPECT_EQ(word, expected) << text;
        }
    });
}

TEST_F(CommaLocale, TheDialogsAreaReachesTheScanner)
{
    FakeScanner scanner = fullScanner();
    bind(scanner);
    get<QAbstractButton>("center_alignment").setChecked(false);
    get<QDoubleSpinBox>("tl_x").setValue(0.0);
    get<QDoubleSpinBox>("br_x").setValue(100.5);
    get<QDoubleSpinBox>("tl_x").setValue(20.3);
    scanner.clearJournal();
    dialog().setAllParam();
    const Sent expected = sent(scanner);
    EXPECT_EQ(scanner.journal().setsOf("tl-x"), std::vector<std::string>{"20.3"});
    EXPECT_EQ(scanner.journal().setsOf("br-x"), std::vector<std::string>{"120.8"});
    underEach([&] {
        scanner.clearJournal();
        dialog().setAllParam();
        EXPECT_EQ(sent(scanner), expected);
    });
}

TEST_F(CommaLocale, WhatIsStoredHasAPointAndComesBack)
{
    FakeScanner scanner = fullScanner();
    int tenths = 0;
    underEach([&] {
        bind(scanner);
        const double width = 100.0 + 0.1 * ++tenths;
        get<QDoubleSpinBox>("br_x").setValue(width);
        press(get<QAbstractButton>("sure"));
        EXPECT_EQ(onDisk(QStringLiteral("ScannerA/br_x")), QStringLiteral("100.%1").arg(tenths));
        const QStringList confirmed = state();
        get<QDoubleSpinBox>("br_x").setValue(50.0);
        press(get<QAbstractButton>("cancel"));
        expectState(confirmed);
        restart(scanner);
        expectState(confirmed);
    });
}
