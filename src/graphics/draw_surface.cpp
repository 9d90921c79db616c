#include "graphics/draw_surface.h"

namespace tobel {

namespace {

double em_pixels(float points)
{
    return double(points) * 96.0 / 72.0;
}

} // namespace

double text_width_pixels(const std::string& text, float points)
{
    return double(text.size()) * 0.55 * em_pixels(points);
}

double text_height_pixels(float points)
{
    return 1.25 * em_pixels(points);
}

void DrawSurface::Cls()
{
    current_x_ = current_y_ = 0;
    on_cls();
}

void DrawSurface::Scale(double left, double top, double right, double bottom)
{
    left_ = float(left);
    top_ = float(top);
    scale_width_ = float(right - left);
    scale_height_ = float(bottom - top);
    on_scale();
}

void DrawSurface::take_window(double left, double top, double right, double bottom)
{
    left_ = float(left);
    top_ = float(top);
    scale_width_ = float(right - left);
    scale_height_ = float(bottom - top);
}

void DrawSurface::ScaleLeft(float v)
{
    left_ = v;
    on_scale();
}
void DrawSurface::ScaleTop(float v)
{
    top_ = v;
    on_scale();
}
void DrawSurface::ScaleWidth(float v)
{
    scale_width_ = v;
    on_scale();
}
void DrawSurface::ScaleHeight(float v)
{
    scale_height_ = v;
    on_scale();
}

void DrawSurface::Line(double x1, double y1, double x2, double y2, Colour colour)
{
    on_segment(float(x1), float(y1), float(x2), float(y2), colour, draw_width_);
    current_x_ = float(x2);
    current_y_ = float(y2);
}

void DrawSurface::LineTo(double x2, double y2, Colour colour)
{
    Line(current_x_, current_y_, x2, y2, colour);
}

void DrawSurface::PSet(double x, double y)
{
    current_x_ = float(x);
    current_y_ = float(y);
    on_dot(current_x_, current_y_, fore_colour_, draw_width_);
}

void DrawSurface::Print(const std::string& text)
{
    on_text(current_x_, current_y_, text, fore_colour_);
    current_y_ = float(double(current_y_) + TextHeight(text));
}

double DrawSurface::TextWidth(const std::string& text) const
{
    return text_width_pixels(text, font_points_) * double(scale_width_) / double(width_);
}

double DrawSurface::TextHeight(const std::string&) const
{
    return text_height_pixels(font_points_) * double(scale_height_) / double(height_);
}

void DrawSurface::Polygon(const std::vector<DevicePoint>& points, Colour colour)
{
    on_polygon(points, colour, fore_colour_);
}

void DrawSurface::fill_box(double x1, double y1, double x2, double y2, Colour colour)
{
    on_fill_box(float(x1), float(y1), float(x2), float(y2), colour);
}

void DrawSurface::draw_image(int handle, double x1, double y1, double x2, double y2)
{
    on_image(handle, float(x1), float(y1), float(x2), float(y2));
}

void DrawSurface::set_font(const std::string& family, float points)
{
    font_points_ = points > 0 ? points : 8;
    on_font(family, font_points_);
}

} // namespace tobel
