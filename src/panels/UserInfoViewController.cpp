#include "panels/UserInfoViewController.h"

#include "core/NumberText.h"
#include "panels/NameValidator.h"
#include "panels/UserInfoWindow.h"
#include "toolkit/Buttons.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/StyleSheet.h"
#include "toolkit/WindowSize.h"
#include "ui_UserInfo.h"

#include <QTextBoundaryFinder>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

// Index after the first `count` user-perceived characters.
qsizetype endOfCharacters(QString const& text, int count)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (int passed = 0; passed < count && finder.toNextBoundary() != -1; ++passed) { }
    return finder.position() == -1 ? text.size() : finder.position();
}

QString enteredPressure(float pressure)
{
    return QString::fromStdString(pressureText(pressure));
}

// Nothing of it would be seen.
bool isBlank(QString const& name)
{
    return std::ranges::all_of(name, [](QChar character) {
        return character.isSpace() || character.category() == QChar::Other_Format;
    });
}

float clampedTarget(float pressure)
{
    return std::clamp(pressure, TensioManager::minTargetPressure, TensioManager::maxTargetPressure);
}

std::optional<float> readPressure(QLineEdit const& input)
{
    auto const pressure = readNumber(input.text().toStdString());
    return pressure && !std::isnan(*pressure) ? pressure : std::nullopt;
}

void setRefused(QLineEdit& input, QLabel& hint, bool isRefused)
{
    setLookProperty(input, "refused", isRefused);
    setLookProperty(hint, "refused", isRefused);
}

// Highlights the field, without a message, until it is edited or accepted.
void refuse(QLineEdit& input, QLabel& hint)
{
    setRefused(input, hint, true);
    input.setFocus();
}

} // namespace

UserInfoViewController::UserInfoViewController(TensioManager& tensioManager, QWidget const& opener)
    : m_tensioManager(tensioManager)
    , m_window(std::make_unique<UserInfoWindow>(*opener.window()))
    , m_ui(std::make_unique<Ui::UserInfo>())
{
    m_ui->setupUi(m_window.get());
    scaleDesign(*m_window,
        dialogScale(
            designFrame(*m_window).size().toSize(), scaleOf(opener), availableSize(opener)));
    m_window->setFixedSize(m_window->size());
    viewDidLoad();
}

UserInfoViewController::~UserInfoViewController()
{
    // viewWillDisappear() must still run.
    m_window->hide();
}

void UserInfoViewController::viewDidLoad()
{
    m_ui->nameInput->setValidator(new NameValidator(m_ui->nameInput));
    m_ui->pressureInput->setText(enteredPressure(m_tensioManager.defaultTargetPressure.value()));
    m_ui->nameInput->setText(QString::fromStdString(m_tensioManager.username.value()));
    // The percentage stays from one subject to the next.
    auto const percent = formatFixed(m_tensioManager.nextTargetPressurePercent() * 100.0f, 0);
    m_ui->percentNotice->setText(m_ui->percentNotice->text().arg(QString::fromStdString(percent)));
    m_ui->percentNotice->setVisible(percent != "100");
    m_subscriptions += m_tensioManager.connectAction.observe([this](auto const& event) {
        if (std::holds_alternative<ValueEvent<Nothing>>(event))
            connectionOpened();
    });
    connectActions();
    connect(
        m_window.get(), &UserInfoWindow::willAppear, this, &UserInfoViewController::viewWillAppear);
    connect(m_window.get(), &UserInfoWindow::willDisappear, this,
        &UserInfoViewController::viewWillDisappear);
    connect(m_window.get(), &QDialog::finished, this, &UserInfoViewController::didClose);
}

void UserInfoViewController::connectActions()
{
    auto const onClick = [this](QAbstractButton* button, void (UserInfoViewController::*action)()) {
        connect(button, &QAbstractButton::clicked, this, action);
    };
    onClick(m_ui->incPressureButton, &UserInfoViewController::incPressureAction);
    onClick(m_ui->decPressureButton, &UserInfoViewController::decPressureAction);
    onClick(m_ui->cancelButton, &UserInfoViewController::cancelAction);
    onClick(m_ui->okButton, &UserInfoViewController::okAction);
    stepOnKeys(*m_ui->incPressureButton, Qt::Key_Up, *m_ui->decPressureButton, Qt::Key_Down);
    clickOnKey(*m_ui->incPressureButton, Qt::Key_Up, *m_ui->pressureInput);
    clickOnKey(*m_ui->decPressureButton, Qt::Key_Down, *m_ui->pressureInput);
    connect(m_ui->nameInput, &QLineEdit::textChanged, this, [this] {
        showMissingName(false);
        setRefused(*m_ui->nameInput, *m_ui->nameHint, false);
    });
    connect(m_ui->pressureInput, &QLineEdit::textChanged, this,
        [this] { setRefused(*m_ui->pressureInput, *m_ui->pressureHint, false); });
}

void UserInfoViewController::show()
{
    m_window->show();
    viewDidAppear();
}

void UserInfoViewController::viewDidAppear()
{
    m_ui->nameInput->setFocus();
    // Typing replaces the name of the last subject.
    m_ui->nameInput->selectAll();
}

void UserInfoViewController::changePressure(float step)
{
    if (auto const pressure = readPressure(*m_ui->pressureInput))
        m_ui->pressureInput->setText(enteredPressure(clampedTarget(*pressure + step)));
    m_ui->pressureInput->setFocus();
}

void UserInfoViewController::cancelAction()
{
    m_window->close();
}

void UserInfoViewController::okAction()
{
    setRefused(*m_ui->nameInput, *m_ui->nameHint, false);
    setRefused(*m_ui->pressureInput, *m_ui->pressureHint, false);
    if (acceptName() && acceptPressure())
        m_tensioManager.connectAction.apply(Nothing {});
}

void UserInfoViewController::showMissingName(bool isMissing)
{
    m_ui->nameHint->setText(
        isMissing ? u"氏名を入力してください（10文字まで）"_s : u"10文字まで"_s);
    m_ui->nameInput->setAccessibleDescription(m_ui->nameHint->text());
}

bool UserInfoViewController::acceptName()
{
    auto const name = m_ui->nameInput->text();
    if (isBlank(name)) {
        m_ui->nameInput->clear();
        showMissingName(true);
        refuse(*m_ui->nameInput, *m_ui->nameHint);
        return false;
    }
    auto const end = endOfCharacters(name, maxNameLength);
    if (end == name.size()) {
        m_acceptedName = name;
        return true;
    }
    m_ui->nameInput->setText(name.left(end));
    refuse(*m_ui->nameInput, *m_ui->nameHint);
    return false;
}

bool UserInfoViewController::acceptPressure()
{
    auto const pressure = readPressure(*m_ui->pressureInput);
    auto const valid = clampedTarget(pressure.value_or(0.0f));
    if (pressure == valid) {
        m_acceptedPressure = valid;
        return true;
    }
    if (pressure)
        m_ui->pressureInput->setText(enteredPressure(valid));
    refuse(*m_ui->pressureInput, *m_ui->pressureHint);
    return false;
}

void UserInfoViewController::connectionOpened()
{
    m_window->accept();
    // The texts may have been edited while the port was opening.
    auto const pressure = readPressure(*m_ui->pressureInput).value_or(m_acceptedPressure);
    m_tensioManager.targetPressure.setValue(clampedTarget(pressure));
    auto const text = m_ui->nameInput->text();
    auto const& name = isBlank(text) ? m_acceptedName : text;
    m_tensioManager.username.setValue(
        name.left(endOfCharacters(name, maxNameLength)).toStdString());
}

void UserInfoViewController::didClose(int result)
{
    m_subscriptions.clear();
    // Readings must not be recorded under the name of the last subject.
    if (result == QDialog::Rejected && m_tensioManager.connectAction.isExecuting())
        m_tensioManager.disconnectAction.apply(Nothing {});
}

} // namespace tensio
