#pragma once

#include "reactive/CocoaAction.h"

#include <QAbstractButton>

namespace tensio {

// Each click runs the command, as long as the context lives.
inline void runOnClick(QAbstractButton& button, CocoaAction const& command, QObject const& context)
{
    QObject::connect(
        &button, &QAbstractButton::clicked, &context, [command] { command.execute(); });
}

} // namespace tensio
