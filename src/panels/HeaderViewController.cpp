#include "panels/HeaderViewController.h"

#include "core/DateText.h"
#include "core/TensioManager.h"
#include "toolkit/Accessible.h"
#include "toolkit/Buttons.h"
#include "ui_Header.h"

using namespace Qt::StringLiterals;

namespace tensio {

HeaderViewController::HeaderViewController(
    TensioManager& tensioManager, QMenu& printMenu, QWidget& view)
    : m_tensioManager(tensioManager)
    , m_ui(std::make_unique<Ui::Header>())
    , m_headerViewModel(tensioManager)
{
    m_ui->setupUi(&view);
    m_ui->printButton->setDropDownMenu(printMenu);
    viewDidLoad();
}

HeaderViewController::~HeaderViewController() = default;

void HeaderViewController::viewDidLoad()
{
    // The first date shown is the current time, not that of the last tick.
    m_tensioManager.updateTime();
    m_subscriptions += m_headerViewModel.dateTime.observe([this](Date date) {
        setLabelText(*m_ui->dateTimeLabel, formatLocalTime(date, "%Y/%m/%d %H:%M:%S"));
    });
    m_subscriptions += m_headerViewModel.username.observe(
        [this](std::string const& name) { setLabelText(*m_ui->nameLabel, name); });
    m_subscriptions
        += m_headerViewModel.canSaveStuff.observe([this](bool canSave) { showCanSave(canSave); });
    runOnClick(*m_ui->saveButton, m_headerViewModel.cocoaActionSaveCsv, *this);
    runOnClick(*m_ui->screenSaveButton, m_headerViewModel.cocoaActionSaveScreenshot, *this);
}

void HeaderViewController::showCanSave(bool canSave)
{
    auto const reason = m_tensioManager.isMeasuring.value()
        ? u"測定中は使えません。先に「終了」を押してください"_s
        : u"測定がまだありません"_s;
    for (QWidget* button : std::initializer_list<QWidget*> {
             m_ui->saveButton, m_ui->screenSaveButton, m_ui->printButton}) {
        button->setEnabled(canSave);
        button->setToolTip(canSave ? QString() : reason);
    }
}

} // namespace tensio
