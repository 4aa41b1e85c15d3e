#include "core/NumberFormat.h"
#include "core/TensioManager.h"
#include "platform/Menu.h"

#include <algorithm>
#include <cmath>

// The target of the session and the default for the next subject.

namespace tensio {

namespace {
constexpr float fallbackTargetPressure = 30.0f;
constexpr int highestOffered = 80;
constexpr int lowestOffered = 10;
constexpr int offeredStep = 5;
} // namespace

void TensioManager::stepTargetPressure(float step)
{
    // Stepping from the rounded value keeps the effective target on the grid of 0.1 that the user
    // sees.
    auto const percent = targetPressurePercent.value();
    auto const shown = std::round(targetPressure.value() * percent * 10.0f) / 10.0f;
    auto const stepped = (shown + step) * (1.0f / percent);
    targetPressure.setValue(std::clamp(stepped, minTargetPressure, maxTargetPressure));
}

void TensioManager::loadDefaultTargetPressure()
{
    auto const stored = m_userDefaults.floatForKey(defaultTargetPressureKey);
    defaultTargetPressure.setValue(stored > 0.0f ? stored : fallbackTargetPressure);
    m_subscriptions.push_back(defaultTargetPressure.observeChanges([this](float target) {
        m_userDefaults.setFloat(defaultTargetPressureKey, target);
        m_userDefaults.synchronize();
    }));
}

void TensioManager::setUpTargetPressureMenu(Menu& menu)
{
    m_targetPressureMenu = &menu;
    menu.removeAllItems();
    for (int target = highestOffered; target >= lowestOffered; target -= offeredStep) {
        auto const value = static_cast<float>(target);
        menu.addItem({formatFixed(value, 1) + " kPa", target,
            defaultTargetPressure.value() == value, [this, target] { setTargetPressure(target); }});
    }
}

void TensioManager::setTargetPressure(int tag)
{
    defaultTargetPressure.setValue(static_cast<float>(tag));
    if (m_targetPressureMenu)
        m_targetPressureMenu->checkOnly(tag);
}

} // namespace tensio
