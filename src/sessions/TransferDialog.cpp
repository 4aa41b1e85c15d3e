#include "sessions/TransferDialog.h"

#include "toolkit/DesignFrame.h"

#include <QPushButton>

#include <utility>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {
constexpr int wholeBar = 1000;
}

TransferDialog::TransferDialog(std::unique_ptr<SessionTransfer> transfer, QString const& text,
    Finished finished, QWidget& parent)
    : QProgressDialog(text, {}, 0, wholeBar, &parent)
    , m_transfer(std::move(transfer))
    , m_finished(std::move(finished))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(u"tensio"_s);
    auto* const cancelButton = new QPushButton(u"キャンセル"_s);
    cancelButton->setProperty("role", u"command"_s);
    setCancelButton(cancelButton);
    setFixedSize(QSize(400, 160) * scaleOfContent(parent));
    setWindowModality(Qt::WindowModal);
    setAutoClose(false);
    setAutoReset(false);
    setMinimumDuration(0);
    connect(this, &QProgressDialog::canceled, this, [this] { end(TransferState::Running); });
    connect(&m_timer, &QTimer::timeout, this, &TransferDialog::step);
    m_timer.start(0);
    show();
}

void TransferDialog::step()
{
    auto const state = m_transfer->step();
    // Last: setValue delivers events, such as a click on the button.
    if (state == TransferState::Running)
        setValue(static_cast<int>(m_transfer->progress() * wholeBar));
    else
        end(state);
}

void TransferDialog::end(TransferState state)
{
    m_timer.stop();
    hide();
    deleteLater();
    m_finished(state, m_transfer->count());
    m_transfer.reset();
}

} // namespace tensio
