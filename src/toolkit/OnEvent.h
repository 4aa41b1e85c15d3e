#pragma once

#include <QEvent>

#include <functional>
#include <vector>

namespace tensio {

// Calls the work just before the object receives an event of these types, or before any object does
// if it is the application; as long as the owner lives.
void onEvent(QObject& watched, std::vector<QEvent::Type> types, QObject& owner,
    std::function<void(QObject& receiver)> work);

} // namespace tensio
