// The form "Material / Discontinuity Editor" as logic: a private text table of
// 13 rows by up to 60 entries, shown four entries at a time with a horizontal
// scroll position. Layers come first, discontinuities after them. The text
// goes back to the project on Continue; a type chosen, a discontinuity added
// or deleted change the project at once.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "project/project.h"
#include "ui/form_key.h"
#include "ui/port.h"

namespace tobel {

constexpr int material_rows = 13;
constexpr int material_table_entries = 60; // entries of the text table
constexpr int material_slots = 4;          // entries side by side
constexpr int material_scroll_limit = 50;  // the window stays within 1..50

// Rows, 1-based as on the form.
enum MaterialRow : int {
    mrow_name = 1,
    mrow_unit_weight = 2,
    mrow_cohesion = 3,
    mrow_cohesion_v = 4,
    mrow_phi = 5,
    mrow_phi_v = 6,
    mrow_piezo = 7,
    mrow_ratio = 8,
    mrow_bbar = 9,
    mrow_coef_a = 10,
    mrow_coef_b = 11,
    mrow_uniaxial = 12,
    mrow_coef_d = 13,
};

constexpr const char* material_form_caption = "Material / Discontinuity Editor";
constexpr const char* material_form_note = "Materials numbered from the  bottom up";
constexpr const char* material_type_label = "Material Type >";
constexpr std::array<const char*, material_rows> material_row_labels = {"Material:",
                                                                        "Unit Weight:",
                                                                        "Cohesion:",
                                                                        "Cohesion, Vertical:",
                                                                        "Friction Angle:",
                                                                        "Fi Angle, Vertical:",
                                                                        "Piezo Surface Number:",
                                                                        "Pore Pressure Ratio:",
                                                                        "B bar coefficient*:",
                                                                        "Coefficient A:",
                                                                        "Coefficient B:",
                                                                        "Uniaxial Strength:",
                                                                        "Coefficient D:"};
// List index + 1 is mat_type.
constexpr std::array<const char*, 5> material_type_names = {"Coulomb", "Anisotropic", "Non-linear",
                                                            "Hard Layer", "Water"};
constexpr const char* material_add_caption = "&Add Discontinuity";
constexpr const char* material_delete_caption = "&Delete Discontinuity";
constexpr const char* material_add_question = "Do you wish to add a discontinuity?";

// Text colours of the cells: light yellow for a locked cell, blue otherwise.
constexpr std::int32_t material_locked_colour = 12648447;
constexpr std::int32_t material_text_colour = 12582912;

struct MaterialForm {
    // cell(row, entry): row 1..13, entry 1..60; index 0 unused. One flat
    // vector: clang 14 overflows its stack value-initialising the nested
    // array of strings this used to be.
    std::vector<std::string> cells =
        std::vector<std::string>(std::size_t(material_rows + 1) * (material_table_entries + 1));
    int row = 1;        // the selected row
    int slot = 1;       // the selected visible column, 1..4
    int first = 1;      // the entry shown in slot 1 (the scroll position)
    std::string edit;   // edit text of the selected cell
    std::string before; // what the selected cell held when it was taken
    bool scroll_visible = false;

    std::string& cell(int r, int e) { return cells[index(r, e)]; }
    const std::string& cell(int r, int e) const { return cells[index(r, e)]; }
    static std::size_t index(int r, int e)
    {
        return std::size_t(r) * (material_table_entries + 1) + std::size_t(e);
    }
    int entry() const { return first + slot - 1; }
    int entry_at(int s) const { return first + s - 1; }
};

// Opens on the project's table: mat_type 0 becomes 1 in the project; the
// cells in signed number form, row 7 the piezo surface number of a negative
// mat_piezo and row 8 a positive one. The window is drawn once.
MaterialForm open_material_form(Project& p);

// Whether the cell of `row` is locked for an entry with type list index t.
bool material_cell_locked(bool discontinuity, int t, int row);

// The text colour of cell (row, slot) as the window shows it.
std::int32_t material_cell_colour(const Project& p, const MaterialForm& form, int row, int slot);

// Heading of a visible slot: "Material " + number for a layer, "Disc. " +
// discontinuity number for a discontinuity, "" for an empty slot.
std::string material_slot_heading(const Project& p, const MaterialForm& form, int slot);

// Colour box of a visible slot: the layer colour, the water colour (13 of the
// piezo table) for a Water layer; none for discontinuities and empty slots.
std::optional<std::int32_t> material_slot_colour(const Project& p, const MaterialForm& form, int slot);

// The type list of a slot: all five types for a layer, Coulomb alone for a
// discontinuity (whose list is locked), none for an empty slot; and the
// index shown (mat_type - 1).
std::vector<std::string> material_type_list(const Project& p, const MaterialForm& form, int slot);
bool material_type_list_locked(const Project& p, const MaterialForm& form, int slot);
int material_type_index(const Project& p, const MaterialForm& form, int slot);

// Redraws the window over the visible slots: row 2 of a discontinuity
// becomes 0, and a friction angle of 90 in row 5 or 6 of an entry that is not
// a Hard Layer becomes 0.
void material_form_redraw(const Project& p, MaterialForm& form);

// A type list change on a layer slot: mat_type = index + 1 at once. Water
// and Hard Layer fill the column with their fixed values.
void material_form_choose_type(Project& p, MaterialForm& form, int slot, int index);

// Arrows move the selected cell, scrolling by one entry past the first or
// last visible column; Enter and Tab store the cell and stay. Landing on the
// slot right after the last entry asks whether to add a discontinuity.
void material_form_key(Project& p, MaterialForm& form, Port& port, FormKey key);

// A click on cell (row, slot): as a move there.
void material_form_select(Project& p, MaterialForm& form, Port& port, int row, int slot);

// The scroll bar: the window starts at entry `position` (kept in 1..47). A
// move by the scroll bar asks nothing.
void material_form_scroll(Project& p, MaterialForm& form, Port& port, int position);

// Stores the edit text into the selected cell with the rules of rows 7 and 8:
// a piezo surface number above num_piezos is refused with a message and the
// cell restored; a positive row 7 clears row 8 and a positive row 8 row 7.
void material_form_store(const Project& p, MaterialForm& form, Port& port);

// "Only " + num_piezos in signed form + " Piezo surfaces exist".
std::string material_piezo_message(const Project& p);

// The key filter of `row` holding `text`: row 1 takes any key but carriage
// return and tab; the others digits, one point and a minus sign typed at the
// start, and backspace; row 7 refuses the point and the minus.
bool material_key_accepted(int row, const std::string& text, char key, int caret = -1);

// Types one key into the selected cell (not into a locked one). Returns
// whether the key was accepted.
bool material_form_type(MaterialForm& form, const Project& p, Port& port, char key, int caret = -1);

// "&Add Discontinuity" and "&Delete Discontinuity" on the selected slot.
void material_form_add_discontinuity(Project& p, MaterialForm& form, Port& port);
void material_form_delete_discontinuity(Project& p, MaterialForm& form, Port& port);

enum class MaterialNext { closed, to_layers };

// Continue: the edit text, then the whole table into the project; a piezo
// surface number is rounded to a whole number; Coulomb entries get their
// vertical values. In the new project wizard the layer form follows.
MaterialNext continue_material_form(Project& p, MaterialForm& form, Port& port);

// Cancel: form_mode = 0; the text is dropped, what already changed in the
// project stays changed.
void cancel_material_form(Project& p, MaterialForm& form);

} // namespace tobel
