#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

// Draws an SVG file as a square picture of the format that the suffix says, with the renderer that
// draws it in the program.
int main(int argc, char** argv)
{
    if (argc != 4) {
        std::fputs("usage: tensio-icon-renderer SVG SIZE PICTURE\n", stderr);
        return 2;
    }
    QSvgRenderer drawing(QFile::decodeName(argv[1]));
    auto const size = QByteArray(argv[2]).toInt();
    QImage picture(size, size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    drawing.render(&painter);
    painter.end();
    bool const isWritten = drawing.isValid() && picture.save(QFile::decodeName(argv[3]));
    return isWritten ? 0 : 1;
}
