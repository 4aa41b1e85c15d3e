#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class About;
}

namespace tensio {

// What the program is, its version, and the licences of what it is made of.
class AboutWindow : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(AboutWindow)

public:
    explicit AboutWindow(QWidget& parent);
    ~AboutWindow() override;

private:
    std::unique_ptr<Ui::About> m_ui;
};

} // namespace tensio
