#include "core/ResultSaver.h"

#include "core/CsvBuilder.h"
#include "core/DateText.h"
#include "core/SavingMessages.h"
#include "core/Utf16.h"
#include "platform/Alerts.h"
#include "platform/PdfRenderer.h"
#include "platform/Saving.h"
#include "platform/Screen.h"

namespace tensio {

namespace {

std::string dateText(Measurements const& measurements)
{
    return dateAndMinute(*measurements.back()->timeStamp);
}

// The main window, measured from the top of the screen.
ScreenRect captureArea(Screen const& screen)
{
    auto area = screen.mainWindowFrame();
    area.y = screen.mainScreenHeight() - area.y - area.height;
    return area;
}

} // namespace

ResultSaver::ResultSaver(MutableProperty<std::string> const& username,
    MeasurementList const& measurementList, SavingServices const& services)
    : m_username(username)
    , m_measurementList(measurementList)
    , m_services(services)
{
}

bool ResultSaver::saveCsv()
{
    auto const& measurements = m_measurementList.measurements();
    return !measurements.empty()
        && saveAsCsv(csvFile(m_username.value(), dateText(measurements)).build(measurements));
}

void ResultSaver::saveSelectedCsv()
{
    auto const selection = m_measurementList.counted();
    if (selection.empty())
        return;
    saveAsCsv(
        csvFile(m_username.value(), dateText(selection))
            .buildSelected(selection, m_measurementList.selectedAverage.value(),
                m_measurementList.minSelectedPressure(), m_measurementList.maxSelectedPressure()));
}

bool ResultSaver::saveAsCsv(std::string const& text)
{
    auto const path = m_services.savePanel.runModal("csv");
    if (!path)
        return false;
    bool const isWritten = write(*path, encodeUtf16(text));
    if (!isWritten)
        showFailure();
    return isWritten;
}

bool ResultSaver::write(std::string const& path, std::string const& bytes)
{
    bool const isWritten = m_services.fileWriter.writeAtomically(path, bytes);
    if (isWritten)
        savedPath.setValue(path);
    return isWritten;
}

void ResultSaver::saveScreenshot()
{
    // First the picture, so that the panel is not on it, nor what is copied while the panel is
    // open.
    m_services.screen.captureToClipboard(captureArea(m_services.screen));
    auto const picture = m_services.screen.clipboardPng();
    auto const path = m_services.savePanel.runModal("png");
    if (path && picture)
        write(*path, *picture);
}

void ResultSaver::saveViewAsPdf(PrintView& view)
{
    if (!m_services.pdfRenderer.hasRoomFor(view)) {
        m_services.alerts.runModal(AlertStyle::Warning, paperTooSmallMessage, {"OK"});
        return;
    }
    // Not always of what the window shows.
    bool const before = m_services.savePanel.setSimulated(view.isSimulated());
    auto const path = m_services.savePanel.runModal("pdf");
    m_services.savePanel.setSimulated(before);
    if (!path)
        return;
    auto const pdf = m_services.pdfRenderer.render(view);
    if (!pdf || !write(*path, *pdf))
        showFailure();
}

void ResultSaver::showFailure()
{
    m_services.alerts.runModal(AlertStyle::Critical, saveFailedMessage, {"OK"});
}

} // namespace tensio
