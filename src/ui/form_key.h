// The keys that move between the cells of a data-entry form.
#pragma once

namespace tobel {

enum class FormKey { up, down, left, right, enter, tab };

// How a one-column form moves between its cells: up one, or down one for
// Down, Enter and Tab; left and right do not move it.
constexpr int vertical_step(FormKey k)
{
    return k == FormKey::up ? -1 : (k == FormKey::left || k == FormKey::right) ? 0 : 1;
}

} // namespace tobel
