// Adding, inserting and deleting surfaces of the stack: stratigraphic layers
// (with their materials) and piezometric surfaces. Every per-surface table
// shifts in step; the mesh grids are sized anew, which empties them, so the
// planes come back only with the next rebuild_surfaces (or, for a grid-file
// surface, when its file is read again).
#pragma once

#include <string>

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// "Combined number of materials and piezo surfaces must not exceed " +
// max_materials in signed form + "."
std::string surface_limit_message(int max_materials);

// Whether one more surface would break the limit: layers + piezometric
// surfaces + 1, counted after the addition, above max_materials.
bool surface_limit_reached(const Project& p);

// Inserts a layer at position `position` (1..num_layers + 1): the surfaces and
// the material entries from there up move one place higher, and the new
// position is cleared ("Material Name", Coulomb, zeros, no file, method 0,
// no lines). At the limit the limit message is shown, nothing changes and the
// result is false.
bool insert_layer(Project& p, int position, Port& port);

// Appends a layer at num_layers + 1, the new ground.
bool add_layer(Project& p, Port& port);

// Deletes layer `position`: the surfaces and material entries above it move
// one place lower. With a single layer, or a position outside the layers,
// nothing happens and the result is false. Asks nothing: the form asks.
bool delete_layer(Project& p, int position);

// The same for piezometric surface number `n`, stack position num_layers + n;
// the material table is not touched.
bool insert_piezo(Project& p, int n, Port& port);
bool add_piezo(Project& p, Port& port);
bool delete_piezo(Project& p, int n);

} // namespace tobel
