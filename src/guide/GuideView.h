#pragma once

#include <QTextBrowser>
#include <QTextObjectInterface>

#include <map>

namespace tensio {

// Shows the pages of the guide, Markdown in the resources: its pictures never wider than the view,
// its headings reachable by links. A picture is read once it comes into sight, in steps that keep
// the event loop running.
class GuideView
    : public QTextBrowser
    , public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)

public:
    explicit GuideView(QWidget* parent);

protected:
    QVariant loadResource(int type, QUrl const& name) override;
    void doSetSource(QUrl const& url, QTextDocument::ResourceType type) override;
    void resizeEvent(QResizeEvent* event) override;

    // Of a picture, as wide as there is room.
    QSizeF intrinsicSize(QTextDocument* document, int position, QTextFormat const& format) override;
    void drawObject(QPainter* painter, QRectF const& frame, QTextDocument* document, int position,
        QTextFormat const& format) override;

private:
    struct Picture {
        // In device pixels, as asked for last.
        QSize size;
        // Read, but not yet scaled.
        QImage source;
        QImage shown;
    };

    void prepareNextPicture();

    // Those that have come into sight, by file.
    std::map<QString, Picture> m_pictures;
};

} // namespace tensio
