// The one drawing surface of the program. Every picture (sections, plans,
// isometry, x-ray, search plots, the section editor) is drawn through it in
// world units; a back end decides what becomes of the drawing. The
// operations keep the names pictures are described with (Cls, Scale, Line,
// LineTo, PSet, Print, ...).
//
// The surface holds the state every back end shares: the world window, the
// current point, the pen width, the fore colour, the font and the caption.
// A back end implements the primitives and the size of text.
#pragma once

#include <string>
#include <vector>

#include "project/display_list.h"

namespace tobel {

struct DevicePoint {
    int x = 0, y = 0;
};

class DrawSurface {
  public:
    DrawSurface(float width, float height) : width_(width), height_(height) {}
    virtual ~DrawSurface() = default;
    DrawSurface(const DrawSurface&) = delete;
    DrawSurface& operator=(const DrawSurface&) = delete;

    // Clears to the background colour.
    void Cls();
    // The world window: coordinates of the upper left and lower right
    // corners; y grows upward when top > bottom.
    void Scale(double left, double top, double right, double bottom);
    float ScaleLeft() const { return left_; }
    float ScaleTop() const { return top_; }
    float ScaleWidth() const { return scale_width_; }
    float ScaleHeight() const { return scale_height_; } // negative in a y-up window
    void ScaleLeft(float v);
    void ScaleTop(float v);
    void ScaleWidth(float v);
    void ScaleHeight(float v);
    // The window a picture is already drawn in, taken up again without
    // telling the back end (a kept picture that more drawing is added to).
    void take_window(double left, double top, double right, double bottom);
    // Outer size in device units (pixels).
    float Width() const { return width_; }
    float Height() const { return height_; }

    // A straight line; its end becomes the current point.
    void Line(double x1, double y1, double x2, double y2, Colour colour);
    // A line from the current point.
    void LineTo(double x2, double y2, Colour colour);
    // Sets the current point and draws one dot there in the fore colour.
    void PSet(double x, double y);
    float CurrentX() const { return current_x_; }
    float CurrentY() const { return current_y_; }
    void CurrentX(double v) { current_x_ = float(v); }
    void CurrentY(double v) { current_y_ = float(v); }
    // Text at the current point (its upper left corner) in the fore colour;
    // the current point moves down one text line.
    void Print(const std::string& text);
    // Size of a text in world units; TextHeight is negative in a y-up window.
    double TextWidth(const std::string& text) const;
    double TextHeight(const std::string& text) const;
    int DrawWidth() const { return draw_width_; }
    void DrawWidth(int w) { draw_width_ = w < 1 ? 1 : w; }
    Colour ForeColor() const { return fore_colour_; }
    void ForeColor(Colour c) { fore_colour_ = c; }
    // A filled polygon of device pixels, solid fill in `colour`, outlined in
    // the fore colour.
    void Polygon(const std::vector<DevicePoint>& points, Colour colour);
    const std::string& Caption() const { return caption_; }
    void Caption(const std::string& c) { caption_ = c; }

    // Beyond the classic operations: a filled box without outline, an image
    // (a handle of the platform port) stretched over a world rectangle, and
    // the font of the text that follows (family and size in points).
    void fill_box(double x1, double y1, double x2, double y2, Colour colour);
    void draw_image(int handle, double x1, double y1, double x2, double y2);
    void set_font(const std::string& family, float points);
    float font_points() const { return font_points_; }

    // World to device and back, with the present window.
    double device_x(double x) const { return (x - double(left_)) / double(scale_width_) * double(width_); }
    double device_y(double y) const { return (y - double(top_)) / double(scale_height_) * double(height_); }

  protected:
    virtual void on_cls() = 0;
    virtual void on_scale() = 0;
    virtual void on_segment(float x1, float y1, float x2, float y2, Colour colour, int width) = 0;
    virtual void on_dot(float x, float y, Colour colour, int width) = 0;
    virtual void on_polygon(const std::vector<DevicePoint>& points, Colour fill, Colour outline) = 0;
    virtual void on_fill_box(float x1, float y1, float x2, float y2, Colour colour) = 0;
    virtual void on_text(float x, float y, const std::string& text, Colour colour) = 0;
    virtual void on_font(const std::string& family, float points) = 0;
    virtual void on_image(int handle, float x1, float y1, float x2, float y2) = 0;

  private:
    float width_, height_;
    float left_ = 0, top_ = 0, scale_width_ = 1, scale_height_ = 1;
    float current_x_ = 0, current_y_ = 0;
    int draw_width_ = 1;
    Colour fore_colour_ = 0;
    std::string caption_;
    float font_points_ = 8;
};

// The size of a text in device pixels at a font size, the same for every
// back end so that a picture lays out alike on screen, paper and file: a
// line is 1.25 em high and a character 0.55 em wide, at 96 pixels an inch.
double text_width_pixels(const std::string& text, float points);
double text_height_pixels(float points);

} // namespace tobel
