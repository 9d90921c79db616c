// Clearing a project, laying down a new project's defaults and sizing the grids.
#pragma once

#include "project/project.h"

namespace tobel {

// Clears the whole state and ends with set_defaults. Leaves data_file_path,
// work_drive, solution_method, surface_kind, dirty_flag, view_col, the colours
// and the recent files as they are.
void reset_project(Project& p);

// Lays down a new project; sizes the grids on the way.
void set_defaults(Project& p);

// Sizes every grid and row vector from num_rows, num_cols and sliding_index.
// Contents are not kept: afterwards every grid holds zeros.
void redim_grids(Project& p);

// num_surfaces, sliding_index and num_mat_entries from the three counts.
void derive_counts(Project& p);

} // namespace tobel
