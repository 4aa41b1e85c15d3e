#pragma once

#include <QProcess>

#include <gtest/gtest.h>
#include <string>

namespace tensio {

// What a reader finds who searches or copies; runs of blanks and line ends count as one blank.
inline std::string pdfText(std::string const& pdf, QStringList arguments = {})
{
    QProcess reader;
    reader.start("pdftotext", arguments << QStringList {"-layout", "-", "-"});
    reader.write(pdf.data(), static_cast<qint64>(pdf.size()));
    reader.closeWriteChannel();
    EXPECT_TRUE(reader.waitForFinished());
    return QString(reader.readAllStandardOutput()).simplified().toStdString();
}

} // namespace tensio
