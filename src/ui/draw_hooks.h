// What a solve or a search announces to the pictures while it runs: the
// frame of the plan of active columns, each column as it is solved, each
// trial as it is recorded, the final surface of a search and its end. The
// solver and the search call these through the port; the graphics of the
// core implement them, so no lower layer draws by itself.
#pragma once

namespace tobel {

struct Project;

class DrawHooks {
  public:
    virtual ~DrawHooks() = default;
    // An interactive solution starts: the plan of active columns is framed.
    virtual void solve_started(Project&) {}
    // Column (row, col) of an interactive solution has its base and weight;
    // `material` is its working material, `layer` the layer of its base.
    virtual void column_solved(Project&, int /*row*/, int /*col*/, int /*material*/, int /*layer*/) {}
    // A trial was recorded (classified already); plot_a and plot_b are the
    // marker's width and height the search passes down. `tentative` marks
    // the redraw of the best trial so far.
    virtual void trial_recorded(Project&, float /*plot_a*/, float /*plot_b*/, bool /*tentative*/) {}
    // The best centre of a finished search and its surface, built and shown.
    virtual void final_surface(Project&, float /*plot_a*/, float /*plot_b*/) {}
    // A search has ended, with or without a final surface: contours and legend.
    virtual void search_ended(Project&) {}
};

} // namespace tobel
