#pragma once

#include <QString>

namespace tensio {

class VisualFeedbackViewModel;

// The texts that screen readers speak for the live area.
struct FeedbackDescription {
    explicit FeedbackDescription(VisualFeedbackViewModel const& viewModel);

    QString pressureScale;
    QString timeScale;
    // Also says when it is reached.
    QString target;
    QString maximum;

    QString gauge() const;
    QString graph() const;
};

} // namespace tensio
