// Pages drawn by the core (a display list a page) sent to a paged device: a
// printer or a PDF file, on Letter paper with the page's own margins.
#pragma once

#include <QPagedPaintDevice>
#include <QPrinter>
#include <QWidget>
#include <functional>

#include "graphics/draw_surface.h"

namespace tobel::gui {

// Draws page `page` (from 1) on the surface; true when more pages follow.
using PageDrawer = std::function<bool(DrawSurface& surface, int page)>;

// The printed face: "Times New Roman" is taken as Liberation Serif, which has
// its metrics, where the first is not installed.
void prepare_page_fonts();

// Letter, portrait, no margins of the device: the pages measure the paper.
void set_letter_pages(QPagedPaintDevice& device);
void set_letter_pages(QPrinter& printer);

// Every page of `draw` on the device, a new sheet between two pages, at
// most `max_pages`. False when the device cannot be painted on.
bool paint_pages(QPagedPaintDevice& device, const PageDrawer& draw, int max_pages = 200);

// The print dialog on a Letter printer; then the pages. False on cancel.
bool print_with_dialog(QWidget* parent, const PageDrawer& draw);

// The pages as a PDF file at `path`; false when it cannot be written.
bool write_pages_pdf(const std::string& path, const PageDrawer& draw);

} // namespace tobel::gui
