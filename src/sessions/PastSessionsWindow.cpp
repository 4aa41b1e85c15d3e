#include "sessions/PastSessionsWindow.h"

#include "core/DateText.h"
#include "core/SavingMessages.h"
#include "core/SessionArchive.h"
#include "platform/Clock.h"
#include "sessions/CourseOutput.h"
#include "sessions/CsvExport.h"
#include "sessions/Dialogs.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/WindowSize.h"
#include "ui_PastSessions.h"

#include <QCalendarWidget>
#include <QDateTime>
#include <QHeaderView>
#include <QPushButton>

#include <utility>

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
    SessionArchive& archive, SessionServices services, QWidget& parent)
    : QDialog(&parent)
    , m_archive(archive)
    , m_services(std::move(services))
    , m_ui(std::make_unique<Ui::PastSessions>())
{
    m_ui->setupUi(this);
    scaleLayouts(*this, dialogScale(size(), scaleOfContent(parent), availableSize(parent)));
    setUpList();
    setUpSearch();
    connectCommands();
    load();
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
    // Not when it is activated: Return clicks the default button as well.
    connect(&list, &QTreeView::doubleClicked, this, &PastSessionsWindow::openSelected);
    connect(list.selectionModel(), &QItemSelectionModel::selectionChanged, this,
        &PastSessionsWindow::showState);
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
    auto const seconds = std::chrono::system_clock::to_time_t(m_services.clock.now());
    return QDateTime::fromSecsSinceEpoch(seconds).date();
}

Period PastSessionsWindow::period() const
{
    switch (m_ui->periodInput->currentIndex()) {
    case ThisMonth:
        return {beginningOfDay(today().addDays(1 - today().day()))};
    case ThreeMonths:
        return {beginningOfDay(today().addMonths(-3))};
    case OneYear:
        return {beginningOfDay(today().addYears(-1))};
    case ChosenDates: {
        auto const [from, to] = std::minmax({m_ui->fromInput->date(), m_ui->toInput->date()});
        return {beginningOfDay(from), beginningOfDay(to.addDays(1))};
    }
    default:
        return {};
    }
}

void PastSessionsWindow::connectCommands()
{
    auto const onClick = [this](QAbstractButton* button, auto work) {
        connect(button, &QAbstractButton::clicked, this, work);
    };
    onClick(m_ui->openButton, &PastSessionsWindow::openSelected);
    onClick(m_ui->courseButton, [this] { showCourse(selected(), m_archive, m_services, *this); });
    onClick(m_ui->removeButton, &PastSessionsWindow::removeSelected);
    onClick(m_ui->closeButton, &QWidget::close);

    auto const onTriggered = [this](QAction* command, auto work) {
        connect(command, &QAction::triggered, this, work);
    };
    onTriggered(m_ui->sameNameAction, &PastSessionsWindow::selectSameName);
    onTriggered(
        m_ui->courseCsvAction, [this] { saveCourse(selected(), m_archive, m_services, *this); });
    onTriggered(m_ui->eachCsvAction, [this] {
        exportCsv(selected(), m_archive, m_services.fileWriter, *this,
            [this](SessionId session) { m_model.markSaved(session); });
    });
    // Not beside 削除…: one slip from losing every patient's data.
    onTriggered(m_ui->removeAllAction, &PastSessionsWindow::removeAll);
    m_ui->moreButton->setMenu(m_ui->moreMenu);
}

void PastSessionsWindow::load()
{
    m_model.clear();
    m_last.reset();
    m_ui->damageLabel->hide();
    loadPage();
    m_ui->sessionList->setCurrentIndex(m_model.index(0, 0));
    // Loading disables the button that has the focus, which would pass to the one beside it.
    m_ui->sessionList->setFocus();
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
    showState();
}

void PastSessionsWindow::search()
{
    m_model.filter(m_ui->searchInput->text(), period());
    m_ui->sessionList->setCurrentIndex(m_model.index(0, 0));
    showState();
}

void PastSessionsWindow::showState()
{
    m_ui->countLabel->setText(u"%1件"_s.arg(m_model.rowCount()));
    // Its question says how many there are.
    m_ui->removeAllAction->setEnabled(!m_last);
    auto const& ranges = m_ui->sessionList->selectionModel()->selection();
    bool const isAny = !ranges.empty();
    bool const isOne = ranges.size() == 1 && ranges.first().height() == 1;
    m_ui->openButton->setEnabled(isOne);
    // It chooses all of that name only once all are loaded.
    m_ui->sameNameAction->setEnabled(isOne && !m_last);
    m_ui->removeButton->setEnabled(isAny);
    m_ui->courseButton->setEnabled(isAny);
    m_ui->courseCsvAction->setEnabled(isAny);
    m_ui->eachCsvAction->setEnabled(isAny);
}

std::vector<SessionSummary> PastSessionsWindow::selected() const
{
    std::vector<SessionSummary> sessions;
    // Of a hundred thousand, Qt's own list of the rows takes seconds.
    for (auto const& range : m_ui->sessionList->selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            sessions.push_back(m_model.session(row));
    }
    return sessions;
}

void PastSessionsWindow::selectSameName()
{
    auto const name = selected().front().name;
    QItemSelection same;
    // Rows in a row as one range: Qt needs seconds for thousands of ranges side by side.
    for (int row = 0, first = 0; row <= m_model.rowCount(); ++row) {
        if (row < m_model.rowCount() && m_model.session(row).name == name)
            continue;
        if (first < row)
            same.select(m_model.index(first, 0), m_model.index(row - 1, m_model.columnCount() - 1));
        first = row + 1;
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
        tell(*this, QMessageBox::Critical, QString::fromUtf8(unreadableMessage));
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
    std::ranges::transform(sessions, std::back_inserter(ids), &SessionSummary::id);
    confirm(*this, what + u"を削除します。\n元に戻すことはできません。"_s, u"削除"_s,
        [this, ids] { showRemoval(m_archive.remove(ids)); });
}

void PastSessionsWindow::removeAll()
{
    confirm(*this,
        u"保存されている以前の測定を、検索で見つからないものも含めて%1件すべて削除します。別名で残した記録も削除します。\n元に戻すことはできません。"_s
            .arg(m_model.total()),
        u"削除"_s, [this] { showRemoval(m_archive.removeAll()); });
}

void PastSessionsWindow::showRemoval(StoreProblem problem)
{
    if (problem == StoreProblem::None) {
        load();
        return;
    }
    // What was selected stays so: another attempt concerns the same sessions.
    auto const whatToDo = problem == StoreProblem::NoSpace
        ? u"ディスクの空き容量を確かめてください。"_s
        : u"管理者に知らせてください。"_s;
    tell(*this, QMessageBox::Critical, u"削除できませんでした。"_s + whatToDo);
}

} // namespace tensio
