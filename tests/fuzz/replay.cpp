// One test for each input that is kept; a finding ends the program with the input's name above it.
#include "bench.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

QDir corpus()
{
    return QDir(qEnvironmentVariable("KESTREL_FUZZ_CORPUS"));
}

std::vector<std::string> inputs()
{
    std::vector<std::string> names;
    const QStringList files = corpus().entryList(QDir::Files, QDir::Name);
    for (const QString& file : files) {
        names.push_back(file.toStdString());
    }
    return names;
}

QByteArray bytesOf(const std::string& name)
{
    QFile file(corpus().filePath(QString::fromStdString(name)));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
}

class Kept : public testing::TestWithParam<std::string>
{
};

TEST_P(Kept, InputIsSurvived)
{
    const QByteArray bytes = bytesOf(GetParam());
    EXPECT_EQ(LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                                     static_cast<std::size_t>(bytes.size())),
              0);
}

TEST(KeptInputs, AreThere)
{
    EXPECT_FALSE(inputs().empty());
}

INSTANTIATE_TEST_SUITE_P(Corpus, Kept, testing::ValuesIn(inputs()),
                         [](const auto& info) { return std::to_string(info.index); });

} // namespace
