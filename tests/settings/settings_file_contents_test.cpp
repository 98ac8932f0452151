// Files made by others, by hand or by accident: what can be read is kept.
#include "settings/settings_file.h"

#include "settings_folder.h"

#include <iterator>
#include <random>
#include <string>

using namespace kestrel;
using namespace kestrel::test;

namespace {

const QString keyA = QStringLiteral("ScannerA/brightness");

} // namespace

TEST(SettingsMadeByOthers, UnknownKeysAndGroupsSurviveEverySave)
{
    const SettingsFolder folder;
    folder.write(
        "; by hand\nloose=1\n[ScannerA]\nbrightness=1\nfuture_key=x, y\nsize=@Size(1 2)\n"
        "bytes=@ByteArray(\\0\\x1)\nat=@@home\n[%E6%96%B0 group]\nempty=\nquoted=\" a;b \"\n"
        "[%General]\nk=v\n");
    const Values before = readAfterRestart(folder.filePath());
    ASSERT_EQ(before.size(), 9);
    Values expected = before;
    for (int round = 1; round <= 3; ++round) {
        const SettingsHandle settings = openSettings(folder.filePath());
        settings->setValue(keyA, QString::number(round));
        EXPECT_TRUE(saveSettings(*settings));
        expected[keyA] = QString::number(round);
        EXPECT_EQ(readAfterRestart(folder.filePath()), expected);
    }
}

TEST(SettingsMadeByOthers, ChangesOfAnotherProgramAreMerged)
{
    const SettingsFolder folder;
    folder.write("[ScannerA]\nbrightness=1\ncontrast=1\n");
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(keyA, QStringLiteral("12"));
    folder.write("[ScannerA]\nbrightness=1\ncontrast=1234\n[B]\nx=1\n");
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(readAfterRestart(folder.filePath()),
              (Values{{keyA, QStringLiteral("12")},
                      {QStringLiteral("ScannerA/contrast"), QStringLiteral("1234")},
                      {QStringLiteral("B/x"), QStringLiteral("1")}}));
}

TEST(SettingsMadeByOthers, OtherEncodingsStayTheBytesTheyWere)
{
    const SettingsFolder folder;
    const QByteArray gb18030 = "\xD7\xD4\xB6\xA9;\xB0\xEC";
    folder.write("[UserTemplates]\nusertemplate=\"" + gb18030 + "\"\n");
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(keyA, QStringLiteral("12"));
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(readAfterRestart(folder.filePath())
                  .value(QStringLiteral("UserTemplates/usertemplate"))
                  .toString()
                  .toLatin1(),
              gb18030);
}

TEST(SettingsMadeByOthers, CutFileKeepsWhatCanBeRead)
{
    const SettingsFolder folder;
    const QByteArray whole = "[ScannerA]\nbrightness=1\ncontrast=22\n[UserTemplates]\n"
                             "usertemplate=\"\\x81ea\\x8ba2;Office\"\nusertemplate_index=1\n";
    for (int length = 0; length <= whole.size(); ++length) {
        const QString name = QStringLiteral("cut%1.ini").arg(length);
        folder.write(whole.left(length), name);
        const Values before = readAfterRestart(folder.filePath(name));
        const SettingsHandle settings = openSettings(folder.filePath(name));
        settings->setValue(QStringLiteral("new/key"), QStringLiteral("1"));
        EXPECT_TRUE(saveSettings(*settings)) << length;
        Values expected = before;
        expected.insert(QStringLiteral("new/key"), QStringLiteral("1"));
        EXPECT_EQ(readAfterRestart(folder.filePath(name)), expected) << length;
    }
}

TEST(SettingsMadeByOthers, BinaryFileIsSurvived)
{
    const SettingsFolder folder;
    QByteArray noise;
    unsigned state = 12345;
    for (int i = 0; i < 100000; ++i) {
        state = state * 1103515245U + 12345U;
        noise += static_cast<char>(state >> 16U);
    }
    folder.write(noise);
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(keyA, QStringLiteral("12"));
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(readAfterRestart(folder.filePath()).value(keyA).toString(), QStringLiteral("12"));
}

TEST(SettingsMadeByOthers, AnyTextThatCanBeReadCanBeSavedWithIt)
{
    const std::string pieces[] = {"@Size(1 2)",
                                  "@",
                                  "\"",
                                  "\\",
                                  "\\x",
                                  "40",
                                  ",",
                                  ";",
                                  "=",
                                  "\n",
                                  "\r",
                                  " ",
                                  "\t",
                                  "[",
                                  "]",
                                  "\n[",
                                  "]\n",
                                  "%",
                                  "%U",
                                  "%2F",
                                  "/",
                                  "//",
                                  "k",
                                  "=1\n",
                                  "[General]\n",
                                  "[%general]\n",
                                  "[%GENERAL]\n",
                                  "\xE8\x87\xAA",
                                  std::string(1, '\0'),
                                  "\v",
                                  "\xA0"};
    std::mt19937 random(20240502); // NOLINT(cert-msc51-cpp)
    std::uniform_int_distribution<std::size_t> piece(0, std::size(pieces) - 1);
    const SettingsFolder folder;
    for (int round = 0; round < 160; ++round) {
        QByteArray data;
        for (int left = round % 40; left > 0; --left) {
            data += QByteArray::fromStdString(pieces[piece(random)]);
        }
        const QString name = QStringLiteral("%1.ini").arg(round);
        folder.write(data, name);
        const SettingsHandle settings = openSettings(folder.filePath(name));
        settings->setValue(keyA, QString::number(round));
        EXPECT_TRUE(saveSettings(*settings)) << data.toHex().constData();
        EXPECT_EQ(readAfterRestart(folder.filePath(name)).value(keyA).toString(),
                  QString::number(round))
            << data.toHex().constData();
    }
}

TEST(SettingsMadeByOthers, NamesThatShareALineDoNotKeepFromSaving)
{
    const SettingsFolder folder;
    folder.write("x=1\n%2Fx=2\n=3\n%2F=4\n");
    const SettingsHandle settings = openSettings(folder.filePath());
    settings->setValue(keyA, QStringLiteral("12"));
    EXPECT_TRUE(saveSettings(*settings));
    EXPECT_EQ(readAfterRestart(folder.filePath()).value(keyA).toString(), QStringLiteral("12"));
}
