#include "commands/dialog_session.h"

#include <type_traits>

#include "commands/commands.h"
#include "project/numtext.h"
#include "solver/checks.h"

namespace tobel {

namespace {

template <class> inline constexpr bool always_false = false;

// The forms of numbers: the cell in work has an edit text that goes into the
// form when the cell is left.
void commit_edit(DialogSession& s)
{
    if (!s.edited)
        return;
    std::visit(
        [&](auto& f) {
            using F = std::decay_t<decltype(f)>;
            if constexpr (std::is_same_v<F, EllipsoidForm>)
                ellipsoid_form_enter(f, s.row, s.edit);
            else if constexpr (std::is_same_v<F, CrackForm>)
                crack_form_enter(f, s.row, s.edit);
            else if constexpr (std::is_same_v<F, ForceForm>)
                force_form_enter(f, s.row, s.col, s.edit);
            else if constexpr (std::is_same_v<F, RotationForm>)
                rotation_form_edit(f, s.edit);
        },
        s.form);
    s.edited = false;
}

// The edit text a cell starts from: its number as the form shows it.
void load_edit(DialogSession& s)
{
    s.edited = false;
    s.edit.clear();
    std::visit(
        [&](auto& f) {
            using F = std::decay_t<decltype(f)>;
            if constexpr (std::is_same_v<F, EllipsoidForm>)
                s.edit = general_text(f.value(s.row));
            else if constexpr (std::is_same_v<F, CrackForm>)
                s.edit = general_text(f.value(s.row));
            else if constexpr (std::is_same_v<F, ForceForm>) {
                if (s.row >= 1 && s.row <= f.count())
                    s.edit = general_text(f.cell(s.row, s.col));
            } else if constexpr (std::is_same_v<F, RotationForm>)
                s.edit = f.text;
        },
        s.form);
}

bool key_accepted(const DialogSession& s, char key)
{
    return std::visit(
        [&](const auto& f) -> bool {
            using F = std::decay_t<decltype(f)>;
            if constexpr (std::is_same_v<F, EllipsoidForm>)
                return ellipsoid_form_accepts(s.edit, key);
            else if constexpr (std::is_same_v<F, CrackForm>)
                return crack_form_accepts(s.edit, key);
            else if constexpr (std::is_same_v<F, ForceForm>)
                return force_form_accepts(s.edit, key);
            else if constexpr (std::is_same_v<F, RotationForm>)
                return rotation_form_accepts(s.edit, key);
            else
                return false;
        },
        s.form);
}

void close(DialogSession& s)
{
    s.form = std::monostate{};
    s.row = s.col = 1;
    s.edit.clear();
    s.edited = false;
}

} // namespace

bool dialog_open(const DialogSession& s)
{
    return !std::holds_alternative<std::monostate>(s.form);
}

std::string dialog_caption(const DialogSession& s)
{
    return std::visit(
        [](const auto& f) -> std::string {
            using F = std::decay_t<decltype(f)>;
            if constexpr (std::is_same_v<F, std::monostate>)
                return "";
            else if constexpr (std::is_same_v<F, InterpolationForm>)
                return "Interpolation Method";
            else if constexpr (std::is_same_v<F, EllipsoidForm>)
                return ellipsoid_form_caption;
            else if constexpr (std::is_same_v<F, ForceForm>)
                return force_form_caption;
            else if constexpr (std::is_same_v<F, CrackForm>)
                return crack_form_caption;
            else if constexpr (std::is_same_v<F, RotationForm>)
                return "Rotation Angle";
            else
                static_assert(always_false<F>);
        },
        s.form);
}

DialogKind parse_dialog_kind(std::string_view name)
{
    if (name == "interpolation")
        return DialogKind::interpolation;
    if (name == "ellipsoid")
        return DialogKind::ellipsoid;
    if (name == "forces")
        return DialogKind::forces;
    if (name == "crack")
        return DialogKind::crack;
    if (name == "rotation")
        return DialogKind::rotation;
    return DialogKind::none;
}

void open_dialog(Project& p, Port& port, DialogSession& s, DialogKind kind)
{
    (void)port;
    close(s);
    switch (kind) {
    case DialogKind::none: return;
    case DialogKind::interpolation: s.form = open_interpolation_form(p); break;
    case DialogKind::ellipsoid:
        // Surface commands start from clear water and force columns.
        reset_forces(p);
        p.keep_window = 0;
        p.form_mode = 0;
        s.form = open_ellipsoid_form(p);
        break;
    case DialogKind::forces: s.form = open_force_form(p); break;
    case DialogKind::crack: s.form = open_crack_form(p); break;
    case DialogKind::rotation: s.form = open_rotation_form(p); break;
    }
    load_edit(s);
}

DialogStep dialog_select(Project&, Port&, DialogSession& s, int row, int col)
{
    return std::visit(
        [&](auto& f) -> DialogStep {
            using F = std::decay_t<decltype(f)>;
            if constexpr (std::is_same_v<F, EllipsoidForm>) {
                if (row < 1 || row > 5)
                    return DialogStep::not_here;
                commit_edit(s);
                f.field = s.row = row;
            } else if constexpr (std::is_same_v<F, CrackForm>) {
                if (row < 1 || row > crack_cells)
                    return DialogStep::not_here;
                commit_edit(s);
                crack_form_click_label(f, row);
                s.row = f.cell;
            } else if constexpr (std::is_same_v<F, ForceForm>) {
                if (row < 1 || row > f.count() || col < 1 || col > force_columns)
                    return DialogStep::not_here;
                commit_edit(s);
                force_form_select(f, row);
                s.row = row;
                s.col = col;
            } else if constexpr (std::is_same_v<F, RotationForm>) {
                commit_edit(s);
            } else {
                return DialogStep::not_here;
            }
            load_edit(s);
            return DialogStep::done;
        },
        s.form);
}

DialogStep dialog_type(Project&, Port& port, DialogSession& s, char key)
{
    if (std::holds_alternative<std::monostate>(s.form) || std::holds_alternative<InterpolationForm>(s.form))
        return DialogStep::not_here;
    if (key == '\b') {
        if (!s.edit.empty())
            s.edit.pop_back();
        s.edited = true;
    } else if (key_accepted(s, key)) {
        s.edit += key;
        s.edited = true;
    } else {
        port.beep();
    }
    return DialogStep::done;
}

DialogStep dialog_clear(Project& p, Port& port, DialogSession& s)
{
    if (std::holds_alternative<std::monostate>(s.form) || std::holds_alternative<InterpolationForm>(s.form))
        return DialogStep::not_here;
    (void)p;
    (void)port;
    s.edit.clear();
    s.edited = true;
    return DialogStep::done;
}

DialogStep dialog_key(Project& p, Port& port, DialogSession& s, FormKey key)
{
    return std::visit(
        [&](auto& f) -> DialogStep {
            using F = std::decay_t<decltype(f)>;
            if constexpr (std::is_same_v<F, EllipsoidForm>) {
                commit_edit(s);
                if (key == FormKey::left || key == FormKey::right)
                    return DialogStep::not_here;
                ellipsoid_form_key(f, key == FormKey::up     ? FieldKey::up
                                      : key == FormKey::down ? FieldKey::down
                                      : key == FormKey::tab  ? FieldKey::tab
                                                             : FieldKey::enter);
                s.row = f.field;
            } else if constexpr (std::is_same_v<F, CrackForm>) {
                commit_edit(s);
                if (key == FormKey::left || key == FormKey::right)
                    return DialogStep::not_here;
                crack_form_key(f, key == FormKey::up     ? CrackKey::up
                                  : key == FormKey::down ? CrackKey::down
                                  : key == FormKey::tab  ? CrackKey::tab
                                                         : CrackKey::enter);
                s.row = f.cell;
            } else if constexpr (std::is_same_v<F, ForceForm>) {
                commit_edit(s);
                // The grid moves a cell at a time, within the lines held.
                if (key == FormKey::up && s.row > 1)
                    --s.row;
                else if (key == FormKey::down && s.row < f.count())
                    ++s.row;
                else if (key == FormKey::left && s.col > 1)
                    --s.col;
                else if ((key == FormKey::right || key == FormKey::tab || key == FormKey::enter) &&
                         s.col < force_columns)
                    ++s.col;
                force_form_select(f, s.row);
            } else if constexpr (std::is_same_v<F, RotationForm>) {
                commit_edit(s);
            } else {
                (void)p;
                (void)port;
                return DialogStep::not_here;
            }
            load_edit(s);
            return DialogStep::done;
        },
        s.form);
}

DialogStep dialog_choose(Project& p, Port&, DialogSession& s, int choice)
{
    if (auto* f = std::get_if<InterpolationForm>(&s.form)) {
        if (choice < 1 || choice > 3)
            return DialogStep::not_here;
        choose_method(p, *f, choice);
        return DialogStep::done;
    }
    if (std::holds_alternative<CrackForm>(s.form)) {
        // The three options are numbered from 0, as crack_mode is.
        if (choice < 0 || choice > 2)
            return DialogStep::not_here;
        crack_form_choose(p, choice);
        return DialogStep::done;
    }
    if (auto* f = std::get_if<RotationForm>(&s.form)) {
        commit_edit(s);
        rotation_form_scroll(*f, choice);
        load_edit(s);
        return DialogStep::done;
    }
    return DialogStep::not_here;
}

DialogStep dialog_button(Project&, Port& port, DialogSession& s, std::string_view button)
{
    if (auto* f = std::get_if<ForceForm>(&s.form)) {
        commit_edit(s);
        if (button == "add")
            force_form_add(*f, port);
        else if (button == "delete")
            force_form_delete(*f);
        else
            return DialogStep::not_here;
        s.row = f->row;
        load_edit(s);
        return DialogStep::done;
    }
    return DialogStep::not_here;
}

void dialog_continue(Project& p, Port& port, DialogSession& s)
{
    commit_edit(s);
    DialogForm form = std::move(s.form);
    close(s);
    std::visit(
        [&](auto& f) {
            using F = std::decay_t<decltype(f)>;
            if constexpr (std::is_same_v<F, InterpolationForm>) {
                if (continue_interpolation_form(p, f, port) == InterpolationNext::rebuilt)
                    show_finished_load_view(p, port);
            } else if constexpr (std::is_same_v<F, EllipsoidForm>) {
                continue_ellipsoid_form(p, f, port);
            } else if constexpr (std::is_same_v<F, ForceForm>) {
                continue_force_form(p, f);
            } else if constexpr (std::is_same_v<F, CrackForm>) {
                continue_crack_form(p, f);
            } else if constexpr (std::is_same_v<F, RotationForm>) {
                continue_rotation_form(p, f);
            }
        },
        form);
}

void dialog_cancel(Project& p, Port&, DialogSession& s)
{
    if (auto* f = std::get_if<ForceForm>(&s.form))
        cancel_force_form(*f);
    else if (std::holds_alternative<CrackForm>(s.form))
        cancel_crack_form(p);
    close(s);
}

} // namespace tobel
