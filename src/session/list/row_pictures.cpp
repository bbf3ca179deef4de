#include "session/list/row_pictures.h"

namespace velmora {

QPainterPath folderShape(const QRectF &box)
{
    QPainterPath shape;
    const qreal tab = box.height() * 0.22;
    shape.moveTo(box.left(), box.top() + 1);
    shape.lineTo(box.left() + box.width() * 0.38, box.top() + 1);
    shape.lineTo(box.left() + box.width() * 0.52, box.top() + tab);
    shape.lineTo(box.right(), box.top() + tab);
    shape.lineTo(box.right(), box.bottom());
    shape.lineTo(box.left(), box.bottom());
    shape.closeSubpath();
    return shape;
}

QPainterPath fileShape(const QRectF &box)
{
    QPainterPath shape;
    const qreal fold = box.width() * 0.36;
    shape.moveTo(box.left(), box.top());
    shape.lineTo(box.right() - fold, box.top());
    shape.lineTo(box.right(), box.top() + fold);
    shape.lineTo(box.right(), box.bottom());
    shape.lineTo(box.left(), box.bottom());
    shape.closeSubpath();
    shape.moveTo(box.right() - fold, box.top());
    shape.lineTo(box.right() - fold, box.top() + fold);
    shape.lineTo(box.right(), box.top() + fold);
    return shape;
}

} // namespace velmora
