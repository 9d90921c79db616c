#include "commands/open_project.h"

#include "geometry/interpolation.h"
#include "project/data_file.h"
#include "project/input_reader.h"
#include "project/legacy_file.h"
#include "project/menus.h"
#include "surfaces/grid_surface.h"

namespace tobel {

void read_data_file(Project& p, const std::string& path, Port& port)
{
    BusyPointer busy(port);
    InputReader in(path);
    read_data_items(p, in);

    for (int k = 1; k <= p.sliding_index; ++k)
        if (p.surf_method[k] == 1)
            read_grid_file(p, p.surf_grd_file[k], k, port);

    show_project_menus(p);
}

void read_legacy_file(Project& p, const std::string& path, Port& port)
{
    BusyPointer busy(port);
    read_legacy_items(p, path);
    for (int k = 1; k <= p.sliding_index; ++k)
        interpolate_surface(p, k);
    show_project_menus(p);
}

} // namespace tobel
