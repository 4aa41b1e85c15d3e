#include "toolkit/Picture.h"

#include <QSvgRenderer>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tensio {

Picture Picture::named(QString const& name)
{
    Picture picture;
    picture.m_name = name;
    picture.m_drawing = std::make_shared<QSvgRenderer>(u":/pictures/%1.svg"_s.arg(name));
    if (!picture.m_drawing->isValid())
        throw std::runtime_error("missing picture: " + name.toStdString());
    return picture;
}

QSizeF Picture::size() const
{
    return m_drawing ? QSizeF(m_drawing->defaultSize()) : QSizeF();
}

void Picture::draw(QPainter& painter, QRectF target) const
{
    if (m_drawing)
        m_drawing->render(&painter, target);
}

} // namespace tensio
