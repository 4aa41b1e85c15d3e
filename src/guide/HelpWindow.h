#pragma once

#include <QWidget>

namespace tensio {

class GuideView;

// The guide for the person who measures and the one for the person who installs.
class HelpWindow : public QWidget {
    Q_OBJECT

public:
    HelpWindow();

    // In front, as large as the screen of the opener allows, at the page read last.
    void showOn(QWidget const& opener);

private:
    void zoomBy(int pixels);

    GuideView* m_guide;
};

} // namespace tensio
