#include "views/picture_window.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>

#include "qt/replay.h"

namespace tobel::gui {

bool world_point(const DisplayList& list, QSizeF target, QPointF device, double& x, double& y)
{
    if (list.last_scale == DisplayList::no_item || list.last_scale >= list.items.size() || target.isEmpty())
        return false;
    const DrawItem& item = list.items[list.last_scale];
    if (item.count < 4 || item.first + 4 > list.coords.size())
        return false;
    const float* f = &list.coords[item.first];
    x = double(f[0]) + device.x() / target.width() * (double(f[2]) - double(f[0]));
    y = double(f[1]) + device.y() / target.height() * (double(f[3]) - double(f[1]));
    return true;
}

PictureCanvas::PictureCanvas(const PictureWindow& w, const ImageStore* images, QWidget* parent)
    : QWidget(parent), w_(w), images_(images)
{
    setMouseTracking(true);
    setMinimumSize(160, 120);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

QRectF PictureCanvas::picture_rect() const
{
    const double dw = w_.picture.device_width > 0 ? w_.picture.device_width : 1;
    const double dh = w_.picture.device_height > 0 ? w_.picture.device_height : 1;
    // The views fitted their world window to the picture's shape: keep it.
    const double s = std::min(width() / dw, height() / dh);
    const double pw = dw * s, ph = dh * s;
    return QRectF((width() - pw) / 2, (height() - ph) / 2, pw, ph);
}

void PictureCanvas::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    if (w_.picture.empty())
        return;
    const QRectF r = picture_rect();
    painter.translate(r.topLeft());
    painter.setRenderHint(QPainter::Antialiasing, false);
    replay(w_.picture, painter, r.size(), images_);
}

bool PictureCanvas::world_of(QPointF at, double& x, double& y) const
{
    const QRectF r = picture_rect();
    return world_point(w_.picture, r.size(), at - r.topLeft(), x, y);
}

void PictureCanvas::mouseMoveEvent(QMouseEvent* e)
{
    double x = 0, y = 0;
    if (!world_of(e->position(), x, y))
        return;
    emit pointer_moved(x, y);
    if (e->buttons() & Qt::LeftButton)
        emit pointer_dragged(x, y);
}

void PictureCanvas::mousePressEvent(QMouseEvent* e)
{
    double x = 0, y = 0;
    if (e->button() == Qt::LeftButton && world_of(e->position(), x, y))
        emit pointer_pressed(x, y);
}

void PictureCanvas::mouseReleaseEvent(QMouseEvent* e)
{
    double x = 0, y = 0;
    if (e->button() == Qt::LeftButton && world_of(e->position(), x, y))
        emit pointer_released(x, y);
}

PictureView::PictureView(PictureWindow& w, const ImageStore* images, QWidget* parent)
    : QWidget(parent), w_(w), images_(images), canvas_(new PictureCanvas(w, images, this)),
      scroll_(new QScrollBar(Qt::Horizontal)),
      scroll_label_(new QLabel), pointer_labels_{new QLabel, new QLabel}, text_(new QPlainTextEdit)
{
    scroll_label_->setObjectName("scroll_label");
    scroll_->setObjectName("scroll");
    text_->setObjectName("text_area");
    auto* outer = new QHBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto* column = new QVBoxLayout;
    column->addWidget(canvas_, 1);
    auto* bottom = new QHBoxLayout;
    bottom_ = bottom;
    bottom->setContentsMargins(4, 0, 4, 2);
    bottom->addWidget(scroll_label_);
    bottom->addWidget(scroll_, 1);
    for (QLabel* l : pointer_labels_) {
        l->setMinimumWidth(110);
        bottom->addWidget(l);
    }
    column->addLayout(bottom);
    outer->addLayout(column, 1);
    // The text area beside the plan: the single column output.
    text_->setReadOnly(true);
    text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text_->setFixedWidth(300);
    outer->addWidget(text_);
    connect(scroll_, &QScrollBar::valueChanged, this, [this](int v) {
        if (!setting_scroll_)
            emit scrolled(v);
    });
    refresh();
}

QPushButton* PictureView::add_button(const QString& text)
{
    auto* b = new QPushButton(text, this);
    b->setObjectName(text);
    bottom_->addWidget(b);
    return b;
}

void PictureView::refresh()
{
    setWindowTitle(QString::fromStdString(w_.caption));
    // The program's own setting of the scroll bar raises no change.
    setting_scroll_ = true;
    scroll_->setRange(w_.scroll.min, w_.scroll.max);
    scroll_->setValue(w_.scroll.value);
    setting_scroll_ = false;
    scroll_->setVisible(w_.scroll.visible);
    scroll_label_->setText(QString::fromStdString(w_.scroll_label));
    scroll_label_->setVisible(w_.scroll_label_visible);
    refresh_pointer_labels();
    QStringList lines;
    for (const auto& l : w_.text_lines)
        lines << QString::fromStdString(l);
    if (text_->toPlainText() != lines.join('\n'))
        text_->setPlainText(lines.join('\n'));
    text_->setVisible(w_.text_visible);
    canvas_->update();
}

void PictureView::refresh_pointer_labels()
{
    for (int i = 0; i < 2; ++i) {
        pointer_labels_[i]->setText(QString::fromStdString(w_.pointer_labels[std::size_t(i)]));
        pointer_labels_[i]->setVisible(w_.pointer_labels_visible);
    }
}

QImage PictureView::render() const
{
    QImage image(canvas_->size(), QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    const QRectF r = canvas_->picture_rect();
    painter.translate(r.topLeft());
    if (!w_.picture.empty())
        replay(w_.picture, painter, r.size(), images_);
    return image;
}

} // namespace tobel::gui
