// A dialog that is bound to a scanner it has not met, after another one was edited: what is stored
// for the new one is what a new dialog stores for it.
#include "config_bench.h"
#include "config_samples.h"

using namespace kestrel;
using namespace kestrel::test;

namespace {

class RebindingToANewScanner : public SettingsBench
{
protected:
    /// What is stored at the first binding of @p scanner to the dialog as it is.
    QByteArray storedFor(FakeScanner& scanner)
    {
        const TempConfigDir folder;
        bindIn(scanner, "ScannerB", folder.path());
        saveSettings(*dialog().settings);
        const QByteArray stored = folder.read(QStringLiteral("ScannerB.ini"));
        EXPECT_FALSE(stored.isEmpty());
        return stored;
    }

    /// The samples number @p round of all settings, as the file of the scanner before has them.
    static StoredList edits(std::size_t round)
    {
        StoredList values{
            {QStringLiteral("ScannerAconfig_version/config_version"), QStringLiteral("102")},
            {QStringLiteral("ScannerA/multistream"), QString::number(round == 0 ? 18 : 320)},
            {QStringLiteral("ScannerA/custom_resolution"), QStringLiteral("%1").arg(444 + round)}};
        for (const auto& [key, rows] : samples()) {
            values.emplace_back(QStringLiteral("ScannerA/") + QString::fromStdString(key),
                                QLatin1String(rows[round % rows.size()].text));
        }
        return values;
    }

    /// @param make makes the new scanner.
    template <typename Make>
    void expectAsInANewDialog(const Make& make)
    {
        beginAnew();
        FakeScanner first = make();
        const QByteArray untouched = storedFor(first);
        for (std::size_t round = 0; round < 4; ++round) {
            prepare(edits(round));
            FakeScanner edited = fullScanner();
            bind(edited);
            FakeScanner next = make();
            EXPECT_EQ(storedFor(next).toStdString(), untouched.toStdString()) << "round " << round;
            leave();
        }
        beginAnew();
    }
};

} // namespace

TEST_F(RebindingToANewScanner, OfManyOptions)
{
    expectAsInANewDialog(fullScanner);
}

TEST_F(RebindingToANewScanner, OfFewerOptions)
{
    expectAsInANewDialog([] {
        FakeScanner scanner = fullScanner();
        for (const char* const name :
             {"brightness", "contrast", "rotate", "resolution", "cachemode-use-default",
              "powersaving", "prefeed", "autocropdeskew", "source"}) {
            scanner.remove(name);
        }
        return scanner;
    });
}

TEST_F(RebindingToANewScanner, OfNoOptions)
{
    expectAsInANewDialog([] { return FakeScanner(); });
}

TEST_F(RebindingToANewScanner, AfterOneWithoutAName)
{
    FakeScanner bare;
    const QByteArray untouched = storedFor(bare);
    beginAnew();
    FakeScanner unnamed = fullScanner();
    unnamed.option("brightness").word(77);
    bind(unnamed, "");
    ASSERT_EQ(brightness(), 77);
    FakeScanner next;
    EXPECT_EQ(storedFor(next), untouched);
}
