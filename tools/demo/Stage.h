#pragma once

#include <QDir>
#include <QString>
#include <QStringList>

#include <functional>
#include <stdexcept>

class QImage;
class QMainWindow;
class QWidget;

namespace tensio {

// The unattended session did not go as it should.
class DemoFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A control of this name must be on the screen.
void click(QString const& name);
void type(QString const& name, QString const& text);
void press(QString const& name, Qt::Key key, Qt::KeyboardModifiers modifiers = {});

// Where the unattended session is played: checks what the real window shows, takes pictures of it
// and answers alerts and file panels.
class Stage {
public:
    // The window takes its design size. Pictures go into the folder, which is made where it is
    // missing.
    Stage(QMainWindow& window, QString const& folder);

    // Runs the event loop until the condition holds; throws DemoFailure when it does not within a
    // minute.
    void waitUntil(QString const& what, std::function<bool()> const& condition) const;

    // Runs the command, after which an alert must say this; it is pictured and answered with its
    // first button.
    void expectAlert(
        QString const& text, QString const& pictureName, std::function<void()> const& command);

    // The next file panel is pictured and answered with this file of the folder.
    void expectFilePanel(QString const& fileName);
    // Runs the command, which must save such a file, in place of an old one.
    void saveAs(QString const& fileName, std::function<void()> const& command);

    // The main window with each menu of the menu bar opened; they are numbered from 1.
    void takePicturesOfMenus(QString const& name) const;
    // Chooses the item with this title, which must be enabled.
    void chooseFromMenu(QString const& title) const;

    // The main window with the dialogs that stand above it.
    void takePicture(QString const& name) const;
    // The main window with numbers from 1 at the corners of these of its controls, for a manual.
    void takeNumberedPicture(QString const& name, QStringList const& controls) const;

private:
    void keep(QImage const& picture, QString const& name) const;
    void answerAlert();
    void answerFilePanel();

    QMainWindow& m_window;
    QDir m_folder;
    QWidget* m_dialogBefore = nullptr;
    QString m_expectedAlert;
    QString m_alertPicture;
    QString m_wrongAlert;
    QString m_expectedFile;
};

} // namespace tensio
