// A child window of the main window for one picture window of the project
// (tob_pic, tob_pic3, tob_picser, tob_picsol, tob_picxray, tob_picres,
// tob_graphic): its kept picture replayed on every paint, its scroll bar
// with its label, the two labels that follow the pointer, and the text area
// beside the plan of active columns.
#pragma once

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QWidget>
#include <functional>

#include "project/pictures.h"
#include "project/project.h"
#include "qt/image_store.h"

namespace tobel::gui {

// The world point under a device point of a picture drawn into `target`
// pixels: the inverse of the picture's last world window. False when the
// picture has no window yet.
bool world_point(const DisplayList& list, QSizeF target, QPointF device, double& x, double& y);

// The picture itself, stretched over the widget with the shape of the
// picture kept (the rest stays white).
class PictureCanvas : public QWidget {
    Q_OBJECT
  public:
    PictureCanvas(const PictureWindow& w, const ImageStore* images, QWidget* parent);
    // Where the picture stands in the widget.
    QRectF picture_rect() const;

  signals:
    void pointer_moved(double x, double y);
    // Place for the interactive behaviours of the views (a click on the plan
    // of active columns, the drag of a set-up handle): the world point of a
    // press, a drag and a release with the left button.
    void pointer_pressed(double x, double y);
    void pointer_dragged(double x, double y);
    void pointer_released(double x, double y);

  protected:
    void paintEvent(QPaintEvent*) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;

  private:
    bool world_of(QPointF at, double& x, double& y) const;
    const PictureWindow& w_;
    const ImageStore* images_;
};

class PictureView : public QWidget {
    Q_OBJECT
  public:
    PictureView(PictureWindow& w, const ImageStore* images, QWidget* parent = nullptr);

    PictureWindow& window() { return w_; }
    PictureCanvas* canvas() { return canvas_; }
    // Takes the caption, the scroll bar, the labels and the text area from
    // the window's state and repaints the picture.
    void refresh();
    // Only the two labels that follow the pointer.
    void refresh_pointer_labels();
    // The picture replayed on an image of the canvas's size, white behind.
    QImage render() const;
    // A button in the row under the picture (the x-ray window's Stop and
    // Continue), named for the tests by its text.
    QPushButton* add_button(const QString& text);

  signals:
    // The user moved the scroll bar (not the program's own setting of it).
    void scrolled(int value);

  private:
    PictureWindow& w_;
    const ImageStore* images_;
    PictureCanvas* canvas_;
    QScrollBar* scroll_;
    QLabel* scroll_label_;
    QLabel* pointer_labels_[2];
    QPlainTextEdit* text_;
    QHBoxLayout* bottom_ = nullptr;
    bool setting_scroll_ = false;
};

} // namespace tobel::gui
