/// @file
/// The English catalogue, as a host loads it.
#pragma once

#include <QCoreApplication>
#include <QString>
#include <QTranslator>

#include <gtest/gtest.h>

namespace kestrel::test {

/// The English texts are in force while it lives.
class English
{
public:
    English()
    {
        EXPECT_TRUE(m_translator.load(QStringLiteral(KESTREL_CATALOGUE)));
        QCoreApplication::installTranslator(&m_translator);
    }

private:
    QTranslator m_translator;
};

} // namespace kestrel::test
