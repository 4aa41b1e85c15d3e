#pragma once

#include "core/Measurement.h"
#include "reactive/CocoaAction.h"

namespace tensio {

class TensioManager;

// The page of finished measurements that the history strip shows, and the average of those the user
// has selected.
class HistoryViewModel {
public:
    explicit HistoryViewModel(TensioManager const& tensioManager);

    MutableProperty<Measurements> measurements {{}};
    // kPa.
    MutableProperty<float> selectedAverage {0.0f};

    CocoaAction cocoaActionIncSliceStartIndex;
    CocoaAction cocoaActionDecSliceStartIndex;

private:
    Subscriptions m_subscriptions;
};

} // namespace tensio
