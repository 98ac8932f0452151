/// @file
/// A hand on the controls of the settings dialog.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>

namespace kestrel {

/// Does to a dialog what a user would do, by the names of its controls. What cannot be done is
/// remembered, so that a whole sequence is written without asking after each step.
class DialogHand
{
public:
    /// @param dialog may be null or go away; then nothing can be done any more
    /// @param[out] problem receives the first thing that could not be done; outlives the hand
    DialogHand(QWidget* dialog, QString& problem);

    /// Chooses the entry of a combo box whose text begins with @p text.
    void choose(const char* name, const QString& text);
    void chooseFirst(const char* name);
    /// Clicks a check box or radio button that is not as it should be.
    void set(const char* name, bool on);
    void click(const char* name);
    void type(const char* name, const QString& text);
    /// Turns to a page by its object name.
    void openTab(const char* page);
    /// Presses the left button over a widget, moves the pointer and lets go.
    /// @param from,to places in parts of the widget's width and height, 0 to 1
    void drag(const char* name, QPointF from, QPointF to);

    /// @return whether a check box or radio button is on
    bool isOn(const char* name);
    /// @return the chosen entry of a combo box
    QString chosen(const char* name);
    /// @return the number in a spin box
    double number(const char* name);

    /// Saves a picture of the dialog; no control has the focus in it.
    void photograph(const QString& file);

    /// Remembers @p problem unless there is one already.
    void note(const QString& problem);

private:
    template <typename Widget>
    Widget* find(const char* name);

    QPointer<QWidget> m_dialog;
    QString& m_problem;
};

/// Plans what happens in the dialog that the next step opens.
/// @param context nothing happens without it
/// @param then gets the dialog; null when none has been opened
void inNextDialog(QObject* context, const std::function<void(QWidget*)>& then);

} // namespace kestrel
