#pragma once

#include "core/MeasurementList.h"

#include <string>

namespace tensio {

class Alerts;
class FileWriter;
class PdfRenderer;
class PrintView;
class SavePanel;
class Screen;

// The interfaces that saving uses.
struct SavingServices {
    PdfRenderer const& pdfRenderer;
    SavePanel& savePanel;
    FileWriter& fileWriter;
    Screen& screen;
    Alerts& alerts;
};

// Saves results to files that the user chooses. A failure to write is shown in an alert; a
// cancelled panel ends a save silently.
class ResultSaver {
public:
    // Of the last file written; empty when there is none. The owner clears it.
    MutableProperty<std::string> savedPath {{}};

    ResultSaver(MutableProperty<std::string> const& username,
        MeasurementList const& measurementList, SavingServices const& services);

    // All measurements, or the selected ones; does nothing when there are none. True when a file
    // with all measurements was written.
    bool saveCsv();
    void saveSelectedCsv();
    // A PNG picture of the main window, through the clipboard. A failure is not reported.
    void saveScreenshot();
    // The pages of a report as a PDF file.
    void saveViewAsPdf(PrintView& view);

private:
    bool saveAsCsv(std::string const& text);
    bool write(std::string const& path, std::string const& bytes);
    void showFailure();

    MutableProperty<std::string> const& m_username;
    MeasurementList const& m_measurementList;
    SavingServices m_services;
};

} // namespace tensio
