#include "sessions/PastSessionsWindow.h"

#include "core/DateText.h"
#include "core/SessionArchive.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/WindowSize.h"
#include "ui_PastSessions.h"

#include <QHeaderView>
#include <QMessageBox>
#include <QPushButton>

#include <limits>

namespace tensio {

namespace {
constexpr std::size_t all = std::numeric_limits<int>::max();
}

PastSessionsWindow::PastSessionsWindow(SessionArchive& archive, QWidget& parent)
    : QDialog(&parent)
    , m_archive(archive)
    , m_ui(std::make_unique<Ui::PastSessions>())
{
    m_ui->setupUi(this);
    scaleLayouts(*this, dialogScale(size(), shownScale(parent), availableSize(parent)));
    setUpList();
    connect(m_ui->searchInput, &QLineEdit::textChanged, this, &PastSessionsWindow::search);
    connect(m_ui->openButton, &QPushButton::clicked, this, &PastSessionsWindow::openSelected);
    connect(m_ui->removeButton, &QPushButton::clicked, this, &PastSessionsWindow::removeSelected);
    connect(m_ui->removeAllButton, &QPushButton::clicked, this, &PastSessionsWindow::removeAll);
    connect(m_ui->closeButton, &QPushButton::clicked, this, &QWidget::close);
    search();
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
        header.resizeSection(column, qRound(width * designScale(*this)));
    header.setSectionResizeMode(PastSessionsModel::Name, QHeaderView::Stretch);
    connect(&list, &QTreeView::activated, this, &PastSessionsWindow::openSelected);
    connect(list.selectionModel(), &QItemSelectionModel::currentChanged, this,
        &PastSessionsWindow::showSelection);
}

void PastSessionsWindow::search()
{
    auto page = m_archive.sessions(std::nullopt, all);
    std::erase_if(page.sessions, [this](auto const& session) {
        return !QString::fromStdString(session.name)
                    .contains(m_ui->searchInput->text(), Qt::CaseInsensitive);
    });
    m_model.show(std::move(page.sessions));
    m_ui->countLabel->setText(QStringLiteral("%1件").arg(m_model.rowCount()));
    if (m_model.rowCount() > 0)
        m_ui->sessionList->setCurrentIndex(m_model.index(0, 0));
    showSelection();
}

void PastSessionsWindow::showSelection()
{
    bool const isSelected = m_ui->sessionList->currentIndex().isValid();
    m_ui->openButton->setEnabled(isSelected);
    m_ui->removeButton->setEnabled(isSelected);
    m_ui->removeAllButton->setEnabled(m_model.rowCount() > 0);
}

void PastSessionsWindow::openSelected()
{
    auto const index = m_ui->sessionList->currentIndex();
    if (!index.isValid())
        return;
    if (m_archive.open(m_model.session(index).id))
        close();
    else
        warn(QStringLiteral("この測定は読み込めませんでした。"));
}

void PastSessionsWindow::removeSelected()
{
    auto const index = m_ui->sessionList->currentIndex();
    if (!index.isValid())
        return;
    auto const session = m_model.session(index);
    auto const date = QString::fromStdString(dateAndMinute(session.start));
    ask(QStringLiteral("%1　%2（%3回）を削除します。\n元に戻すことはできません。")
            .arg(date, QString::fromStdString(session.name), QString::number(session.count)),
        [this, id = session.id] { return m_archive.remove({id}); });
}

void PastSessionsWindow::removeAll()
{
    ask(QStringLiteral("以前の測定を%1件すべて削除します。\n元に戻すことはできません。")
            .arg(m_archive.sessions(std::nullopt, all).sessions.size()),
        [this] { return m_archive.removeAll(); });
}

void PastSessionsWindow::ask(QString const& question, std::function<StoreProblem()> const& remove)
{
    auto* box = new QMessageBox(
        QMessageBox::Warning, QStringLiteral("tensio"), question, QMessageBox::NoButton, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    auto* const keep = box->addButton(QStringLiteral("キャンセル"), QMessageBox::RejectRole);
    auto* const doRemove = box->addButton(QStringLiteral("削除"), QMessageBox::AcceptRole);
    box->setDefaultButton(keep);
    box->setEscapeButton(keep);
    connect(doRemove, &QAbstractButton::clicked, this, [this, remove] {
        if (remove() != StoreProblem::None)
            warn(QStringLiteral("削除できませんでした。"));
        search();
    });
    box->open();
}

void PastSessionsWindow::warn(QString const& message)
{
    auto* box = new QMessageBox(
        QMessageBox::Critical, QStringLiteral("tensio"), message, QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

} // namespace tensio
