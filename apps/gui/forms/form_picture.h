// A kept picture on a widget, and the pointer over it in the picture's world
// units: what the section editor and the set-up pictures of the ellipsoid
// and search forms are drawn on and dragged in.
#pragma once

#include <QWidget>
#include <optional>

#include "graphics/section_editor.h"
#include "project/display_list.h"
#include "qt/image_store.h"

namespace tobel::gui {

// The world window in force at the end of a list: left, top, right, bottom.
struct PictureWindowUnits {
    double left = 0, top = 0, right = 1, bottom = 1;
};
std::optional<PictureWindowUnits> picture_window(const DisplayList& list);

// A point of a widget of size (width, height) showing the whole list, in
// the list's world units (y across, e up).
QPointF widget_to_world(const DisplayList& list, QPointF at, QSizeF widget);
// The inverse: where a world point stands on the widget.
QPointF world_to_widget(const DisplayList& list, QPointF world, QSizeF widget);

class FormPicture : public QWidget {
    Q_OBJECT
  public:
    FormPicture(const DisplayList* list, const ImageStore* images, QWidget* parent = nullptr);
    void set_list(const DisplayList* list) { list_ = list; }
    QSize sizeHint() const override;

  signals:
    // A pointer event in world units, with the button and Shift.
    void pointer(int action, int button, bool shift, double y, double e);

  protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;

  private:
    void send(int action, QMouseEvent* e);
    const DisplayList* list_;
    const ImageStore* images_;
    Qt::MouseButton held_ = Qt::NoButton;
};

} // namespace tobel::gui
