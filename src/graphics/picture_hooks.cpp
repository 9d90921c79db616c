#include "graphics/picture_hooks.h"

#include "graphics/contours.h"
#include "graphics/picture.h"
#include "graphics/plan_active.h"
#include "graphics/search_plots.h"

namespace tobel {

void PictureHooks::solve_started(Project& p)
{
    draw_plan_active(p, port_);
}

void PictureHooks::column_solved(Project& p, int row, int col, int material, int layer)
{
    draw_active_column(p, row, col, material, layer);
}

// The surface in zgrid and the marker at (y, z), in the window the search
// picture holds (the section under the trials): the trace first for a
// trial, the centre first for the final surface.
static void plot_on_search_picture(Project& p, double y, double z, float plot_a, float plot_b, bool tentative,
                                   bool centre_first)
{
    PictureWindow& w = p.pictures.search;
    RecordingSurface s = picture_surface(p, w);
    resume_picture(p, s);
    const bool was = p.view.tentative_marker;
    p.view.tentative_marker = tentative;
    if (centre_first)
        draw_trial_marker(p, s, y, z, plot_a, plot_b);
    draw_trial_trace(p, s);
    if (!centre_first)
        draw_trial_marker(p, s, y, z, plot_a, plot_b);
    p.view.tentative_marker = was;
}

void PictureHooks::trial_recorded(Project& p, float plot_a, float plot_b, bool tentative)
{
    plot_on_search_picture(p, p.search.trial.y, p.search.trial.z, plot_a, plot_b, tentative, false);
}

// The final surface is the best so far, so it is drawn as the best trials
// were: in tentative yellow (our choice; the marker's colour is open).
void PictureHooks::final_surface(Project& p, float plot_a, float plot_b)
{
    plot_on_search_picture(p, p.search.best.y, p.search.best.z, plot_a, plot_b, true, true);
}

void PictureHooks::search_ended(Project& p)
{
    PictureWindow& w = p.pictures.search;
    RecordingSurface s = picture_surface(p, w);
    resume_picture(p, s);
    draw_contours(p, s);
    draw_fs_legend(p, s);
}

} // namespace tobel
