// The x-ray view: every longitudinal section of the mesh on one picture,
// one section per tick of a 100 millisecond timer, each shifted a little up
// and to the right of the one before, starting at the last mesh row. The
// picture is not cleared between ticks: it builds up into a see-through
// stack of sections with their forces. The animation lives in
// p.pictures.xray_state; a window system calls xray_step while timer_on.
#pragma once

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// The period of the timer that drives xray_step.
constexpr int xray_timer_ms = 100;

// Sets up the picture on tob_picxray and starts the timer. The x-ray command
// shows the window, captions it "X-RAY" and finds force_peak first.
void start_xray(Project& p, Port& port);

// One tick: draws row xray_row and moves on to the row before; after row 1
// the timer stops and both buttons are hidden.
void xray_step(Project& p);

// "Stop": timer off, "Continue" shown instead.
void xray_stop(Project& p);
// "Continue": timer on, "Stop" shown instead.
void xray_continue(Project& p);

// The whole animation without a timer: start, then a step for each tick the
// timer would give until it stops.
void run_xray(Project& p, Port& port);
// The steps the timer has still to draw, all at once.
void finish_xray(Project& p);

} // namespace tobel
