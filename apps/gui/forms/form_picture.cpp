#include "forms/form_picture.h"

#include <QMouseEvent>
#include <QPainter>

#include "commands/dialog_session.h"
#include "qt/replay.h"

namespace tobel::gui {

std::optional<PictureWindowUnits> picture_window(const DisplayList& list)
{
    if (list.last_scale == DisplayList::no_item || list.last_scale >= list.items.size())
        return std::nullopt;
    const DrawItem& it = list.items[list.last_scale];
    if (it.count < 4)
        return std::nullopt;
    const float* f = &list.coords[it.first];
    return PictureWindowUnits{f[0], f[1], f[2], f[3]};
}

QPointF widget_to_world(const DisplayList& list, QPointF at, QSizeF widget)
{
    const PictureWindowUnits w = picture_window(list).value_or(PictureWindowUnits{});
    const double fx = widget.width() > 0 ? at.x() / widget.width() : 0;
    const double fy = widget.height() > 0 ? at.y() / widget.height() : 0;
    return {w.left + fx * (w.right - w.left), w.top + fy * (w.bottom - w.top)};
}

QPointF world_to_widget(const DisplayList& list, QPointF world, QSizeF widget)
{
    const PictureWindowUnits w = picture_window(list).value_or(PictureWindowUnits{});
    const double sx = w.right != w.left ? (world.x() - w.left) / (w.right - w.left) : 0;
    const double sy = w.bottom != w.top ? (world.y() - w.top) / (w.bottom - w.top) : 0;
    return {sx * widget.width(), sy * widget.height()};
}

FormPicture::FormPicture(const DisplayList* list, const ImageStore* images, QWidget* parent)
    : QWidget(parent), list_(list), images_(images)
{
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

QSize FormPicture::sizeHint() const
{
    // The picture at three quarters of its device size: room for the fields beside it.
    if (list_ == nullptr)
        return {400, 300};
    return {int(list_->device_width * 3 / 4), int(list_->device_height * 3 / 4)};
}

void FormPicture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    if (list_ != nullptr)
        replay(*list_, painter, QSizeF(size()), images_);
}

void FormPicture::send(int action, QMouseEvent* e)
{
    if (list_ == nullptr)
        return;
    const QPointF w = widget_to_world(*list_, e->position(), QSizeF(size()));
    const Qt::MouseButton b = action == int(PointerAction::move) ? held_ : e->button();
    const int button = b == Qt::RightButton ? int(PointerButton::right) : int(PointerButton::left);
    emit pointer(action, button, (e->modifiers() & Qt::ShiftModifier) != 0, w.x(), w.y());
}

void FormPicture::mousePressEvent(QMouseEvent* e)
{
    held_ = e->button();
    send(int(PointerAction::down), e);
}

void FormPicture::mouseMoveEvent(QMouseEvent* e)
{
    send(int(PointerAction::move), e);
}

void FormPicture::mouseReleaseEvent(QMouseEvent* e)
{
    send(int(PointerAction::up), e);
    held_ = Qt::NoButton;
}

} // namespace tobel::gui
