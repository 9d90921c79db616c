// The drawing surface that keeps what is drawn as a display list: the kept
// picture of a window (repaint, clipboard, print, report) and what the tests
// read. Joined lines of one colour and width become one run of points.
#pragma once

#include "graphics/draw_surface.h"

namespace tobel {

class RecordingSurface : public DrawSurface {
  public:
    // Draws into `list`, whose device size is the surface's size.
    explicit RecordingSurface(DisplayList& list);

    // Takes up the last window of the list, so that what is drawn next
    // registers with what is there and the list gets no second copy of the
    // window. False when the list has no window yet.
    bool resume();

  protected:
    void on_cls() override;
    void on_scale() override;
    void on_segment(float x1, float y1, float x2, float y2, Colour colour, int width) override;
    void on_dot(float x, float y, Colour colour, int width) override;
    void on_polygon(const std::vector<DevicePoint>& points, Colour fill, Colour outline) override;
    void on_fill_box(float x1, float y1, float x2, float y2, Colour colour) override;
    void on_text(float x, float y, const std::string& text, Colour colour) override;
    void on_font(const std::string& family, float points) override;
    void on_image(int handle, float x1, float y1, float x2, float y2) override;

  private:
    DrawItem& add(DrawOp op, Colour colour, std::initializer_list<float> numbers);
    DisplayList& list_;
};

// The four numbers of a scale item, the points of a run, a text: read back
// for replay and tests.
struct RunPoint {
    float x = 0, y = 0;
};
std::vector<RunPoint> run_points(const DisplayList& list, const DrawItem& item);

} // namespace tobel
