// What a form shows, read from the open form of the dialog session: its
// table of cells, its notes, its option buttons, its buttons and menus and
// the picture it stands beside. One small description per form drives the
// one generic dialog of form_dialog.h.
#pragma once

#include <QString>
#include <QStringList>
#include <string>
#include <vector>

#include "commands/dialog_session.h"
#include "project/display_list.h"
#include "project/project.h"

namespace tobel::gui {

struct FormButton {
    QString label;
    std::string name; // the session's name of the button
    int arg = 0;
    bool enabled = true;
};

// A drop-down menu of buttons that take a number (Go To, Copy).
struct FormMenu {
    QString label;
    std::string name;
    std::vector<std::pair<QString, int>> items;
};

struct FormOption {
    QString label;
    int choice = 0;
    bool checked = false;
};

struct FormView {
    QStringList notes;
    QStringList column_titles, row_titles;
    std::vector<std::vector<QString>> cells; // [row][column] of the rows shown
    std::vector<std::vector<int>> colours;   // cell backgrounds (-1 none), when given
    // The session's numbers of the table's first row and column; a click on
    // table cell (r, c), 0-based, selects (first_row + r, first_col + c).
    int first_row = 1, first_col = 1;
    int current_row = 0, current_col = 0; // in the session's numbers; 0 for none
    QString options_title;
    std::vector<FormOption> options;
    // The scroll bar of the form, when it has one (dialog_choose takes its value).
    bool scroll = false;
    int scroll_min = 0, scroll_max = 0, scroll_value = 0;
    QString scroll_label; // the caption over it, when it has one
    // A vertical scroll bar beside the cells, from 1 (dialog_choose takes its
    // value): the section editor's point table.
    bool table_scroll = false;
    int table_scroll_max = 1, table_scroll_value = 1;
    // A colour shown on its own beside the cells (the colour editor's
    // swatch); -1 for none.
    int swatch = -1;
    QString continue_label = "&Continue", cancel_label = "Cance&l";
    std::vector<FormButton> buttons;
    std::vector<FormMenu> menus;
    // The picture the form works on: the set-up picture of the ellipsoid and
    // search forms, the section editor's own picture.
    const DisplayList* picture = nullptr;
    // The small pictures (the colour sampler, the rotation arrow) keep their
    // device size; the others take the room they are given.
    bool picture_fixed = false;
};

FormView describe_form(const Project& p, const DialogSession& s);

} // namespace tobel::gui
