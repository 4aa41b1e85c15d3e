#pragma once

#include <QTextBrowser>

namespace tensio {

// Shows the pages of the guide, Markdown in the resources: its pictures never wider than the view,
// its headings reachable by links.
class GuideView : public QTextBrowser {
    Q_OBJECT

public:
    explicit GuideView(QWidget* parent);

protected:
    QVariant loadResource(int type, QUrl const& name) override;
    void doSetSource(QUrl const& url, QTextDocument::ResourceType type) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fitPictures();
    QImage fitted(QUrl const& name) const;
};

} // namespace tensio
