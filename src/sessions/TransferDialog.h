#pragma once

#include "platform/SessionStore.h"

#include <QProgressDialog>
#include <QTimer>

#include <functional>

namespace tensio {

// Runs a transfer in steps from the event loop, and shows its progress. At the end it calls back,
// drops the transfer and deletes itself.
class TransferDialog : public QProgressDialog {
    Q_OBJECT

public:
    // The state is Running when the user has cancelled it.
    using Finished = std::function<void(TransferState state, int count)>;

    TransferDialog(std::unique_ptr<SessionTransfer> transfer, QString const& text,
        Finished finished, QWidget& parent);

private:
    void step();
    void end(TransferState state);

    std::unique_ptr<SessionTransfer> m_transfer;
    Finished m_finished;
    QTimer m_timer;
};

} // namespace tensio
