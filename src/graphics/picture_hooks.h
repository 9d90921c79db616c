// The pictures that follow a solve or a search as it runs: the plan of
// active columns of an interactive solution, and the trials, the final
// surface, the contours and the legend on the search picture. A port that
// shows pictures returns one of these from draw_hooks().
#pragma once

#include "project/project.h"
#include "ui/draw_hooks.h"
#include "ui/port.h"

namespace tobel {

class PictureHooks : public DrawHooks {
  public:
    explicit PictureHooks(Port& port) : port_(port) {}

    // The frame of the plan of active columns.
    void solve_started(Project& p) override;
    // The column's box on the plan.
    void column_solved(Project& p, int row, int col, int material, int layer) override;
    // On the search picture: the trace of the trial's surface, then the box
    // at its centre; in tentative yellow, the trace 2 pixels wide, when it
    // is the best so far.
    void trial_recorded(Project& p, float plot_a, float plot_b, bool tentative) override;
    // The best centre and its surface, in tentative yellow.
    void final_surface(Project& p, float plot_a, float plot_b) override;
    // The contours of F and the legend of the colour scale.
    void search_ended(Project& p) override;

  private:
    Port& port_;
};

} // namespace tobel
