#include "sessions/PastSessionsWindow.h"

#include "core/DateText.h"
#include "core/SessionArchive.h"
#include "platform/Clock.h"
#include "sessions/Dialogs.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/WindowSize.h"
#include "ui_PastSessions.h"

#include <QCalendarWidget>
#include <QDateTime>
#include <QHeaderView>
#include <QMenu>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {
constexpr std::size_t pageSize = 500;

// The rows of the drop-down list.
enum PeriodRow { AnyTime, ThisMonth, ThreeMonths, OneYear, ChosenDates };

Date beginningOfDay(QDate day)
{
    return Date(std::chrono::milliseconds(day.startOfDay().toMSecsSinceEpoch()));
}

} // namespace

PastSessionsWindow::PastSessionsWindow(
    SessionArchive& archive, SessionServices const& services, QWidget& parent)
    : QDialog(&parent)
    , m_archive(archive)
    , m_clock(services.clock)
    , m_ui(std::make_unique<Ui::PastSessions>())
    , m_output(archive, services, *this)
{
    m_ui->setupUi(this);
    scaleLayouts(*this, dialogScale(size(), scaleOfContent(parent), availableSize(parent)));
    setUpList();
    setUpSearch();
    addMoreCommands();
    connect(m_ui->openButton, &QPushButton::clicked, this, &PastSessionsWindow::openSelected);
    connect(m_ui->courseButton, &QPushButton::clicked, this,
        [this] { m_output.showCourse(selected()); });
    connect(&m_output, &SessionOutput::saved, &m_model, &PastSessionsModel::markSaved);
    connect(m_ui->removeButton, &QPushButton::clicked, this, &PastSessionsWindow::removeSelected);
    connect(m_ui->closeButton, &QPushButton::clicked, this, &QWidget::close);
    load();
    m_ui->sessionList->setFocus();
}

PastSessionsWindow::~PastSessionsWindow() = default;

void PastSessionsWindow::setUpList()
{
    auto& list = *m_ui->sessionList;
    list.setModel(&m_model);
    auto& header = *list.header();
    header.setSectionsMovable(false);
    header.setStretchLastSection(false);
    for (auto const& [column, width] : {std::pair {PastSessionsModel::Start, 150},
             {PastSessionsModel::Count, 70}, {PastSessionsModel::Best, 120},
             {PastSessionsModel::Saved, 100}, {PastSessionsModel::Simulated, 100}})
        header.resizeSection(column, qRound(width * scaleOf(*this)));
    header.setSectionResizeMode(PastSessionsModel::Name, QHeaderView::Stretch);
    connect(&list, &QTreeView::activated, this, &PastSessionsWindow::openSelected);
    connect(list.selectionModel(), &QItemSelectionModel::selectionChanged, this,
        &PastSessionsWindow::showSelection);
}

void PastSessionsWindow::setUpSearch()
{
    m_ui->datesView->hide();
    m_ui->toInput->setDate(today());
    m_ui->fromInput->setDate(today().addMonths(-1));
    connect(m_ui->searchInput, &QLineEdit::textChanged, this, &PastSessionsWindow::search);
    connect(m_ui->periodInput, &QComboBox::currentIndexChanged, this, [this](int row) {
        m_ui->datesView->setVisible(row == ChosenDates);
        // Not before: making a calendar takes time that the opening of the list does not have.
        for (auto* date : {m_ui->fromInput, m_ui->toInput})
            date->calendarWidget()->setFirstDayOfWeek(Qt::Sunday);
        search();
    });
    for (auto* date : {m_ui->fromInput, m_ui->toInput})
        connect(date, &QDateEdit::dateChanged, this, &PastSessionsWindow::search);
}

QDate PastSessionsWindow::today() const
{
    auto const now = m_clock.now().time_since_epoch();
    return QDateTime::fromSecsSinceEpoch(
        std::chrono::duration_cast<std::chrono::seconds>(now).count())
        .date();
}

Period PastSessionsWindow::period() const
{
    Period period;
    auto const from = m_ui->fromInput->date();
    auto const to = m_ui->toInput->date();
    switch (m_ui->periodInput->currentIndex()) {
    case ThisMonth:
        period.first = beginningOfDay(today().addDays(1 - today().day()));
        break;
    case ThreeMonths:
        period.first = beginningOfDay(today().addMonths(-3));
        break;
    case OneYear:
        period.first = beginningOfDay(today().addYears(-1));
        break;
    case ChosenDates:
        period
            = {beginningOfDay(std::min(from, to)), beginningOfDay(std::max(from, to).addDays(1))};
        break;
    }
    return period;
}

// Not beside 削除…: one slip from losing every patient's data.
void PastSessionsWindow::addMoreCommands()
{
    auto* const menu = new QMenu(this);
    m_sameName
        = menu->addAction(u"同じ氏名を選択(&S)"_s, this, &PastSessionsWindow::selectSameName);
    menu->addSeparator();
    m_courseCsv = menu->addAction(
        u"経過のCSVを保存(&K)…"_s, this, [this] { m_output.saveCourse(selected()); });
    m_eachCsv = menu->addAction(
        u"測定ごとのCSVを保存(&C)…"_s, this, [this] { m_output.saveEach(selected()); });
    menu->addSeparator();
    m_removeAll = menu->addAction(u"すべて削除(&A)…"_s, this, &PastSessionsWindow::removeAll);
    m_removeAll->setObjectName(u"removeAllAction"_s);
    m_ui->moreButton->setMenu(menu);
}

void PastSessionsWindow::load()
{
    m_model.clear();
    m_last.reset();
    m_ui->damageLabel->hide();
    loadPage();
    m_ui->sessionList->setCurrentIndex(m_model.index(0, 0));
    showSelection();
}

void PastSessionsWindow::loadPage()
{
    auto const page = m_archive.sessions(m_last, pageSize);
    m_model.append(page.sessions);
    m_last.reset();
    if (page.sessions.size() == pageSize) {
        m_last = page.sessions.back();
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (m_last)
                    loadPage();
            },
            Qt::QueuedConnection);
    }
    if (!page.isComplete)
        m_ui->damageLabel->show();
    showCount();
    showSelection();
}

void PastSessionsWindow::search()
{
    m_model.filter(m_ui->searchInput->text(), period());
    m_ui->sessionList->setCurrentIndex(m_model.index(0, 0));
    showCount();
    showSelection();
}

void PastSessionsWindow::showCount()
{
    m_ui->countLabel->setText(u"%1件"_s.arg(m_model.rowCount()));
    // Its question says how many there are.
    m_removeAll->setEnabled(!m_last);
}

void PastSessionsWindow::showSelection()
{
    auto const count = m_ui->sessionList->selectionModel()->selectedRows().size();
    m_ui->openButton->setEnabled(count == 1);
    // It chooses all of that name only once all are loaded.
    m_sameName->setEnabled(count == 1 && !m_last);
    m_ui->removeButton->setEnabled(count > 0);
    m_ui->courseButton->setEnabled(count > 0);
    m_courseCsv->setEnabled(count > 0);
    m_eachCsv->setEnabled(count > 0);
}

std::vector<SessionSummary> PastSessionsWindow::selected() const
{
    std::vector<SessionSummary> sessions;
    for (auto const& index : m_ui->sessionList->selectionModel()->selectedRows())
        sessions.push_back(m_model.session(index.row()));
    return sessions;
}

void PastSessionsWindow::selectSameName()
{
    auto const name = selected().front().name;
    QItemSelection same;
    for (int row = 0; row < m_model.rowCount(); ++row) {
        if (m_model.session(row).name == name)
            same.select(m_model.index(row, 0), m_model.index(row, m_model.columnCount() - 1));
    }
    m_ui->sessionList->selectionModel()->select(same, QItemSelectionModel::ClearAndSelect);
}

void PastSessionsWindow::openSelected()
{
    auto const sessions = selected();
    if (sessions.size() != 1)
        return;
    if (m_archive.open(sessions.front().id))
        close();
    else
        tell(*this, QMessageBox::Critical, u"この測定は読み込めませんでした。"_s);
}

void PastSessionsWindow::removeSelected()
{
    auto const sessions = selected();
    if (sessions.empty())
        return;
    auto const& first = sessions.front();
    auto what = u"%1　%2（%3回）"_s.arg(QString::fromStdString(dateAndMinute(first.start)),
        QString::fromStdString(first.name), QString::number(first.count));
    if (sessions.size() > 1)
        what = u"選択した%1件の測定"_s.arg(sessions.size());
    std::vector<SessionId> ids;
    ids.reserve(sessions.size());
    for (auto const& session : sessions)
        ids.push_back(session.id);
    ask(what + u"を削除します。\n元に戻すことはできません。"_s,
        [this, ids] { return m_archive.remove(ids); });
}

void PastSessionsWindow::removeAll()
{
    ask(u"保存されている以前の測定を、検索で見つからないものも含めて%1件すべて削除します。別名で残した記録も削除します。\n元に戻すことはできません。"_s
            .arg(m_model.total()),
        [this] { return m_archive.removeAll(); });
}

void PastSessionsWindow::ask(QString const& question, std::function<StoreProblem()> const& remove)
{
    auto* box
        = new QMessageBox(QMessageBox::Warning, u"tensio"_s, question, QMessageBox::NoButton, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    auto* const keep = box->addButton(u"キャンセル"_s, QMessageBox::RejectRole);
    auto* const doRemove = box->addButton(u"削除"_s, QMessageBox::AcceptRole);
    box->setDefaultButton(keep);
    box->setEscapeButton(keep);
    connect(doRemove, &QAbstractButton::clicked, this, [this, remove] { showRemoval(remove()); });
    box->open();
}

void PastSessionsWindow::showRemoval(StoreProblem problem)
{
    if (problem == StoreProblem::NoSpace)
        tell(*this, QMessageBox::Critical,
            u"削除できませんでした。ディスクの空き容量を確かめてください。"_s);
    else if (problem != StoreProblem::None)
        tell(*this, QMessageBox::Critical, u"削除できませんでした。"_s);
    load();
}

} // namespace tensio
