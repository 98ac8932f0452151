// A host that loads the library at run time, and lets go of it before it quits.
#include "support/fake_scanner.h"
#include "support/host.h"
#include "support/models.h"
#include "support/user.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QSettings>
#include <QTimer>

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <functional>
#include <memory>
#include <stdexcept>

using namespace kestrel::test;

namespace {

class Library
{
public:
    Library() : m_handle(dlopen(SETTINGUI_LIBRARY, RTLD_NOW | RTLD_LOCAL))
    {
        if (m_handle == nullptr) {
            throw std::runtime_error(dlerror());
        }
    }
    ~Library() { EXPECT_EQ(dlclose(m_handle), 0); }
    Q_DISABLE_COPY_MOVE(Library)

    template <typename Function>
    Function* function(const char* symbol) const
    {
        return reinterpret_cast<Function*>(dlsym(m_handle, symbol));
    }

private:
    void* m_handle;
};

class UnloadedLibrary : public testing::Test
{
protected:
    /// Loads the library, binds a dialog, lets @p user at it, deletes it and closes the library.
    void live(const std::function<void(QDialog&)>& user)
    {
        const Library library;
        auto* const create =
            library.function<decltype(creatKestrelSetUI)>("_Z17creatKestrelSetUIPv");
        auto* const init =
            library.function<decltype(initKestrelSetUI)>("_Z16initKestrelSetUIPvS_S_PKc");
        ASSERT_NE(create, nullptr);
        ASSERT_NE(init, nullptr);
        const std::unique_ptr<QDialog> dialog(static_cast<QDialog*>(create(nullptr)));
        ScannerIdentity record = identity();
        init(dialog.get(), m_scanner.handle(), &record, m_folder.path());
        user(*dialog);
    }

    static void quit()
    {
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        EXPECT_EQ(QApplication::exec(), 0);
    }

    QString stored() const
    {
        const QSettings file(m_folder.file(QStringLiteral("ScannerA.ini")), QSettings::IniFormat);
        return file.value(QStringLiteral("ScannerA/brightness")).toString();
    }

    TempConfigDir m_folder;
    FakeScanner m_scanner = fullScanner();
};

} // namespace

TEST_F(UnloadedLibrary, TheHostCanQuit)
{
    live([](QDialog& dialog) {
        child<QAbstractSlider>(dialog, "brightness_set").setValue(14);
        press(child<QAbstractButton>(dialog, "sure"));
    });
    quit();
    EXPECT_EQ(stored(), QStringLiteral("14"));
}

TEST_F(UnloadedLibrary, WhatCouldNotBeSavedIsSavedWhenTheHostQuits)
{
    const QString obstacle = m_folder.file(QStringLiteral("ScannerA.ini.lock"));
    live([&obstacle](QDialog& dialog) {
        ASSERT_TRUE(QDir().mkdir(obstacle));
        child<QAbstractSlider>(dialog, "brightness_set").setValue(14);
        press(child<QAbstractButton>(dialog, "sure"));
    });
    ASSERT_TRUE(QDir().rmdir(obstacle));
    quit();
    EXPECT_EQ(stored(), QStringLiteral("14"));
}
