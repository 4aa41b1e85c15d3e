#include "core/CsvFormat.h"
#include "core/DateText.h"
#include "core/SavingMessages.h"
#include "core/TensioManager.h"
#include "core/Utf16.h"
#include "platform/Alerts.h"
#include "platform/Printing.h"
#include "platform/Saving.h"
#include "platform/Screen.h"

// What the user saves.

namespace tensio {

namespace {

std::string dateText(Measurements const& measurements)
{
    return formatLocalTime(*measurements.back()->timeStamp, "%Y/%m/%d %H:%M");
}

// The main window, measured from the top of the screen.
ScreenRect captureArea(Screen const& screen)
{
    auto area = screen.mainWindowFrame();
    area.y = screen.mainScreenHeight() - area.y - area.height;
    return area;
}

} // namespace

void TensioManager::saveCsv()
{
    auto const& measurements = measurementList.measurements();
    if (!measurements.empty())
        saveAsCsv(m_saving.csvFormat.all(username.value(), dateText(measurements), measurements));
}

void TensioManager::saveSelectedCsv()
{
    auto const selection = measurementList.counted();
    if (selection.empty())
        return;
    saveAsCsv(m_saving.csvFormat.selected(username.value(), dateText(selection), selection,
        measurementList.selectedAverage.value(), measurementList.minSelectedPressure(),
        measurementList.maxSelectedPressure()));
}

void TensioManager::saveAsCsv(std::string const& text)
{
    auto const path = m_saving.savePanel.runModal("csv");
    if (path && !m_saving.fileWriter.writeAtomically(*path, encodeUtf16(text)))
        tellUser(saveFailedMessage);
}

void TensioManager::saveScreenshot()
{
    // First the picture, so that the panel is not on it.
    m_saving.screen.captureToClipboard(captureArea(m_saving.screen));
    auto const path = m_saving.savePanel.runModal("png");
    if (!path)
        return;
    if (auto const picture = m_saving.screen.clipboardPng())
        m_saving.fileWriter.writeAtomically(*path, *picture);
}

void TensioManager::saveViewAsPdf(PrintView& view)
{
    if (!m_saving.pdfRenderer.hasRoomFor(view)) {
        tellUser(paperTooSmallMessage);
        return;
    }
    auto const path = m_saving.savePanel.runModal("pdf");
    if (!path)
        return;
    auto const pdf = m_saving.pdfRenderer.render(view);
    if (!pdf || !m_saving.fileWriter.writeAtomically(*path, *pdf))
        tellUser(saveFailedMessage);
}

void TensioManager::tellUser(char const* message)
{
    m_saving.alerts.runModal(AlertStyle::Critical, message, {"OK"});
}

} // namespace tensio
