#pragma once

#include <QString>

namespace tensio {

class Application;

// The options with which tensio-demo starts itself again.
inline auto const measureUntilKilledOption = QStringLiteral("--measure-until-killed");
inline auto const recoverOption = QStringLiteral("--recover");

// Lets another tensio-demo measure, kills it in mid-session, and lets a third one open what it had
// recorded. To be called before this program creates its Application, which would lock the store.
bool hasSurvivedACrash(QString const& folder);

void measureUntilKilled(Application& application, QString const& folder);
// Throws DemoFailure when the session is not there.
void recover(Application& application, QString const& folder);

} // namespace tensio
