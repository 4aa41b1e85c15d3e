#pragma once

#include <QDir>
#include <QString>
#include <QStringList>

#include <functional>
#include <stdexcept>

class QImage;
class QMainWindow;
class QMenu;
class QWidget;

namespace tensio {

// The unattended session did not go as it should.
class DemoFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Plays the user of the unattended session: clicks and types on the real window, checks what it
// shows and answers alerts.
class Stage {
public:
    // The window takes its design size, which a screen without a display may be too small for.
    // Pictures go into the folder, which is made where it is missing.
    Stage(QMainWindow& window, QString const& folder);

    // Runs the event loop until the condition holds; throws DemoFailure when it does not within a
    // minute.
    void waitUntil(QString const& what, std::function<bool()> const& condition) const;
    void waitFor(int milliseconds) const;

    void click(QString const& name) const;
    void type(QString const& name, QString const& text) const;
    // The next alert must say this; it is pictured and answered with its first button.
    void expectAlert(QString const& text, QString const& pictureName);
    // Waits until the expected alert has been shown and closed.
    void waitForAlert() const;

    // The next save panel is pictured and answered with this file of the folder.
    void expectSavePanel(QString const& fileName, QString const& pictureName);
    // Waits until the expected panel has closed and the file exists.
    void waitForFile(QString const& fileName) const;

    // The menus of the menu bar, in their order.
    QList<QMenu*> menus() const;
    void openMenu(QMenu& menu, QString const& pictureName) const;
    // Chooses the item with this title, which must be enabled.
    void chooseFromMenu(QString const& title) const;

    // The main window with the dialogs that stand above it.
    void takePicture(QString const& name) const;
    // The main window with numbers from 1 at the corners of these of its controls, for a manual.
    void takeNumberedPicture(QString const& name, QStringList const& controls) const;
    void keep(QImage const& picture, QString const& name) const;

private:
    void answerAlert();
    void answerSavePanel();
    QWidget& find(QString const& name) const;

    QMainWindow& m_window;
    QDir m_folder;
    QString m_expectedAlert;
    QString m_alertPicture;
    QString m_wrongAlert;
    QString m_expectedFile;
    QString m_panelPicture;
};

} // namespace tensio
