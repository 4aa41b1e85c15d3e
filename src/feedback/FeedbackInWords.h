#pragma once

#include <QString>

namespace tensio {

class VisualFeedbackViewModel;

// The live area in words, for those who do not see it.
struct FeedbackInWords {
    explicit FeedbackInWords(VisualFeedbackViewModel const& viewModel);

    QString pressureScale;
    QString timeScale;
    // Says also when it is reached.
    QString target;
    QString maximum;

    QString gauge() const;
    QString graph() const;
};

} // namespace tensio
