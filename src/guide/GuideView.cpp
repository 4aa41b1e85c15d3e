#include "guide/GuideView.h"

#include "toolkit/DesignFrame.h"

#include <QFile>
#include <QImageReader>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextList>
#include <QTextTable>

#include <algorithm>
#include <cmath>

namespace tensio {

namespace {

constexpr double margin = 24.0;

// The anchor of a heading: without punctuation, a hyphen for each space.
QString anchorOf(QString const& heading)
{
    static QRegularExpression const punctuation(
        QStringLiteral("[^\\w\\s-]"), QRegularExpression::UseUnicodePropertiesOption);
    return QString(heading).toLower().remove(punctuation).replace(u' ', u'-');
}

// Qt gives Markdown headings no anchors.
void formatHeadings(QTextDocument& document, double scale)
{
    for (auto block = document.begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 0)
            continue;
        QTextCharFormat name;
        name.setAnchor(true);
        name.setAnchorNames({anchorOf(block.text())});
        QTextCursor cursor(block);
        cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(name);
        auto format = block.blockFormat();
        format.setTopMargin(20.0 * scale);
        format.setBottomMargin(8.0 * scale);
        cursor.setBlockFormat(format);
    }
}

void spaceLists(QTextDocument& document, double scale)
{
    for (auto block = document.begin(); block.isValid(); block = block.next()) {
        auto const* list = block.textList();
        if (!list)
            continue;
        auto format = block.blockFormat();
        format.setTopMargin((list->itemNumber(block) == 0 ? 8.0 : 2.0) * scale);
        QTextCursor(block).setBlockFormat(format);
    }
}

void wrapCode(QTextDocument& document, double scale)
{
    for (auto block = document.begin(); block.isValid(); block = block.next()) {
        auto format = block.blockFormat();
        if (!format.nonBreakableLines())
            continue;
        format.setNonBreakableLines(false);
        format.setBackground(QColor(0xf1, 0xf2, 0xf4));
        format.setTopMargin(4.0 * scale);
        format.setBottomMargin(4.0 * scale);
        QTextCursor(block).setBlockFormat(format);
    }
}

void ruleTables(QTextDocument& document, double scale)
{
    for (auto* frame : document.rootFrame()->childFrames()) {
        auto* table = qobject_cast<QTextTable*>(frame);
        if (!table)
            continue;
        auto format = table->format();
        format.setBorder(scale);
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBorderBrush(QColor(0xb8, 0xbe, 0xc8));
        format.setBorderCollapse(true);
        format.setCellPadding(6.0 * scale);
        format.setCellSpacing(0.0);
        format.setTopMargin(8.0 * scale);
        format.setBottomMargin(8.0 * scale);
        table->setFormat(format);
    }
}

} // namespace

GuideView::GuideView(QWidget* parent)
    : QTextBrowser(parent)
{
    setAccessibleName(QStringLiteral("手引き"));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(QFrame::NoFrame);
}

QVariant GuideView::loadResource(int type, QUrl const& name)
{
    if (type == QTextDocument::ImageResource)
        return fitted(name);
    auto const resource = QTextBrowser::loadResource(type, name);
    if (type != QTextDocument::MarkdownResource)
        return resource;
    // Qt would show a space for the end of a line, also between Japanese characters.
    static QRegularExpression const lineEnd(
        QStringLiteral("(?<=[^\\x00-\\x7f])\n *(?=[^\\x00-\\x7f])"));
    return QString::fromUtf8(resource.toByteArray()).remove(lineEnd).toUtf8();
}

void GuideView::doSetSource(QUrl const& url, QTextDocument::ResourceType type)
{
    QTextBrowser::doSetSource(url, type);
    auto const scale = designScale(*this);
    document()->setDocumentMargin(margin * scale);
    formatHeadings(*document(), scale);
    spaceLists(*document(), scale);
    wrapCode(*document(), scale);
    ruleTables(*document(), scale);
    if (url.hasFragment())
        scrollToAnchor(url.fragment(QUrl::FullyDecoded));
    else
        verticalScrollBar()->setValue(0);
}

void GuideView::resizeEvent(QResizeEvent* event)
{
    QTextBrowser::resizeEvent(event);
    if (event->oldSize().width() != event->size().width())
        fitPictures();
}

void GuideView::fitPictures()
{
    // Keeps the line at the top of the view in place.
    auto const atTop = cursorForPosition({0, 0});
    auto const offset = cursorRect(atTop).top();
    for (auto block = document()->begin(); block.isValid(); block = block.next()) {
        for (auto fragment = block.begin(); !fragment.atEnd(); ++fragment) {
            auto const image = fragment.fragment().charFormat().toImageFormat();
            if (!image.isValid())
                continue;
            QUrl const name(image.name());
            document()->addResource(
                QTextDocument::ImageResource, document()->baseUrl().resolved(name), fitted(name));
            document()->markContentsDirty(
                fragment.fragment().position(), fragment.fragment().length());
        }
    }
    verticalScrollBar()->setValue(verticalScrollBar()->value() + cursorRect(atTop).top() - offset);
}

QImage GuideView::fitted(QUrl const& name) const
{
    QImage const image(QStringLiteral(":") + source().resolved(name).path());
    if (image.isNull())
        return image;
    auto const ratio = devicePixelRatioF();
    auto const scale = designScale(*this);
    auto const room = viewport()->width() - (2.0 * margin + 8.0) * scale;
    auto const width = std::clamp(room, 1.0, image.width() * scale);
    auto result = image.scaledToWidth(
        static_cast<int>(std::lround(width * ratio)), Qt::SmoothTransformation);
    result.setDevicePixelRatio(ratio);
    return result;
}

} // namespace tensio
