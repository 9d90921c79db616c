#include "surfaces/grid_surface.h"

#include <new>

#include "geometry/grid_file.h"
#include "project/menus.h"
#include "project/runtime_error.h"
#include "surfaces/crack.h"
#include "surfaces/dips.h"
#include "surfaces/moment_centre.h"

namespace tobel {

namespace {

constexpr const char* wrong_file_text =
    "Wrong .GRD file.  Use 'Edit Stratigraphic Layer Surfaces' to correct.";

} // namespace

void read_grid_file(Project& p, const std::string& path, int surface, Port& port)
{
    BusyPointer busy(port);
    forget_solver_work(p.work);
    try {
        read_grid(p, path, surface, port);
    } catch (const RuntimeError&) {
        port.message_box(wrong_file_text, Buttons::ok, Icon::none, "");
        return;
    } catch (const std::bad_alloc&) {
        port.message_box(wrong_file_text, Buttons::ok, Icon::none, "");
        return;
    }
    if (surface == p.sliding_index) {
        apply_crack(p);
        scale_forces(p);
        derive_dips(p);
        find_moment_centre(p);
        show_solve_menu(p, SolveItems::single_trial, true);
        p.surface_defined = -1;
        p.form_mode = 0;
    }
}

} // namespace tobel
