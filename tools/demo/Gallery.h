#pragma once

#include "Stage.h"

#include <QSize>

#include <vector>

namespace tensio {

class Application;
class TensioManager;

// Every look of every window, for whoever judges them. The states are set directly, with the
// longest texts that there can be; no device is needed.
class Gallery {
public:
    Gallery(Application& application, QString const& folder);

    // Throws DemoFailure when a state cannot be reached.
    void show();

private:
    void showMainWindow(QSize size);
    void showDialog(QString const& prefix);
    void showAlertsAndPanels();
    void showMenus();
    void showPreview();

    void forgetAll();
    void measure(std::vector<float> const& bestPressures, int firstNumber = 1);
    void press();
    void selectThree();
    void take(QString const& name) const;

    Application& m_application;
    TensioManager& m_manager;
    Stage m_stage;
    QString m_prefix;
};

} // namespace tensio
