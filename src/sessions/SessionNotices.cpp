#include "sessions/SessionNotices.h"

#include "core/DateText.h"
#include "core/SavingMessages.h"
#include "core/SessionArchive.h"
#include "toolkit/Accessible.h"
#include "ui_StoreProblem.h"
#include "ui_UnsavedSession.h"

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

QString textOf(StoreProblem problem)
{
    switch (problem) {
    case StoreProblem::None:
        break;
    case StoreProblem::InUse:
        return u"別のtensioが起動しているため、自動保存されず、以前の測定も開けません。CSVを保存してください。"_s;
    case StoreProblem::NotOpened:
        return u"自動保存の場所に書き込めません。以前の測定も開けません。測定を終えたらCSVを保存してください。"_s;
    case StoreProblem::NotWritable:
        return u"自動保存の場所に書き込めません。測定を終えたら、以前の測定を開く前にCSVを保存してください。"_s;
    case StoreProblem::NewerSetAside:
        return u"新しいバージョンの記録のため、別名で残しました。新しいtensioで開いてください。"_s;
    case StoreProblem::DamagedSetAside:
        return u"以前の記録が壊れていたため、別名で残しました。管理者に知らせてください。"_s;
    case StoreProblem::NoSpace:
        return u"測定を自動保存できません。空き容量を確かめ、終了後、以前の測定を開く前にCSVを保存してください。"_s;
    case StoreProblem::Vanished:
        return u"以前の測定の記録が見つからないため、新しく記録します。管理者に知らせてください。"_s;
    case StoreProblem::Damaged:
        return u"自動保存の記録が壊れています。測定を終えたら、以前の測定を開く前にCSVを保存してください。"_s;
    }
    return {};
}

} // namespace

SessionNotices::SessionNotices(SessionArchive& archive, QWidget& unsavedView, QWidget& problemView)
    : m_archive(archive)
    , m_unsavedView(unsavedView)
    , m_problemView(problemView)
    , m_unsaved(std::make_unique<Ui::UnsavedSession>())
    , m_problem(std::make_unique<Ui::StoreProblem>())
{
    m_unsaved->setupUi(&m_unsavedView);
    m_problem->setupUi(&m_problemView);
    setAccessibleRole(*m_problem->storeProblemLabel, QAccessible::Notification);
    connect(m_problem->hideProblemButton, &QPushButton::clicked, &m_problemView, &QWidget::hide);
    m_subscriptions += m_archive.problem.observe(
        [this](StoreProblem problem) { showProblem(textOf(problem)); });
    m_subscriptions += m_archive.shown.observeChanges([this](auto const& session) {
        bool const isDamaged = session.has_value() && !m_archive.isShownWhole();
        showDamage(isDamaged ? u"この測定の一部は、壊れていて読み込めませんでした。"_s : QString());
    });
    m_subscriptions
        += m_archive.unsaved.observe([this](auto const& session) { showUnsaved(session); });
    connect(
        m_unsaved->openUnsavedButton, &QPushButton::clicked, this, &SessionNotices::openUnsaved);
    connect(m_unsaved->dismissButton, &QPushButton::clicked, this,
        [this] { m_archive.dismissUnsaved(); });
}

SessionNotices::~SessionNotices() = default;

void SessionNotices::showUnsaved(std::optional<SessionSummary> const& session)
{
    if (!session && m_unsavedView.isAncestorOf(m_unsavedView.window()->focusWidget()))
        Q_EMIT willMoveFocus();
    m_unsavedView.setVisible(session.has_value());
    if (!session)
        return;
    m_unsaved->unsavedSimulatedLabel->setVisible(session->isSimulated);
    m_unsaved->unsavedDetailLabel->setText(u"%1　%2　%3回"_s.arg(
        QString::fromStdString(session->name),
        QString::fromStdString(dateAndMinute(session->start)), QString::number(session->count)));
}

void SessionNotices::openUnsaved()
{
    if (auto const session = m_archive.unsaved.value(); session && !m_archive.open(session->id))
        showDamage(QString::fromUtf8(unreadableMessage));
}

void SessionNotices::showDamage(QString const& damage)
{
    if (!damage.isEmpty())
        showProblem(damage);
    else if (m_isDamageShown)
        showProblem(textOf(m_archive.problem.value()));
    m_isDamageShown = !damage.isEmpty();
}

void SessionNotices::showProblem(QString const& problem)
{
    auto& label = *m_problem->storeProblemLabel;
    setLabelText(label, problem);
    m_problemView.setVisible(!problem.isEmpty());
    if (!problem.isEmpty())
        announcePolitely(label, problem);
}

} // namespace tensio
