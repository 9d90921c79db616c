// The keys that move between the cells of a data-entry form.
#pragma once

namespace tobel {

enum class FormKey { up, down, left, right, enter, tab };

} // namespace tobel
