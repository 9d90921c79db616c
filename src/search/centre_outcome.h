// What the evaluation of one search centre gives, as a plain record: the
// ordered list of what it recorded (each trial's result fields and the
// message boxes its solutions raised), whether its first trial was out of
// bounds, and where the radius line search ended. The search replays these
// records in the order of the centres onto the user's project, so that a
// centre can be evaluated anywhere: on a worker thread or in another run.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <vector>

#include "ui/port.h"

namespace tobel {

// A trial to be recorded: the fields of the trial record the solution gave.
struct RecordedTrial {
    float fos = 0;
    float y = 0, z = 0, radius = 0;
    float volume = 0, active = 0, third = 0, unbalance = 0, weight = 0;
    std::int16_t valid = 0;
    // The sliding surface along the row the search picture shows (index 0
    // unused), kept only when the search draws its trials.
    std::vector<float> trace;
};

// A message box a solution raised; a worker answers OK-only boxes with OK
// and any question with Cancel, as nobody can answer it there.
struct RecordedBox {
    std::string text, title;
    Buttons buttons = Buttons::ok;
    Icon icon = Icon::none;
};

struct CentreEvent {
    bool is_box = false;
    RecordedTrial trial;
    RecordedBox box;
};

// One centre to evaluate: `index` is the grid's k or the stencil point.
struct CentreJob {
    long index = 0;
    float y = 0, z = 0;
    float point_y = 0, point_z = 0; // the common point
    float tangent_z = 0, radius_step = 0;
    float plot_a = 0, plot_b = 0;
};

struct CentreOutcome {
    long index = 0;
    std::vector<CentreEvent> events;
    bool out = false;       // the centre's first trial was out of bounds
    bool cancelled = false; // Stop came during the centre: events hold what was complete
    // The radius line search improved; then its last direction and count.
    bool stepped = false;
    std::int16_t radius_direction = 1;
    std::int16_t radius_step_count = 1;
    // The surfaces solved for the centre, recorded or not, and their active columns.
    std::int64_t solved = 0;
    double solved_columns = 0;
    // A run-time error of the evaluation, raised again where it came in order.
    // A run-time error keeps its number and description too, so that a
    // record read back from a file raises the same error.
    std::exception_ptr error;
    int error_number = 0;
    std::string error_description;
};

// A grid search spread over several runs: which centres this run evaluates,
// and the outcomes of the others.
class CentreExchange {
  public:
    virtual ~CentreExchange() = default;
    // True when this run evaluates centre k itself.
    virtual bool evaluates(long k) const = 0;
    // False for a run that evaluates its share only: the search then
    // records nothing and hands each outcome to `evaluated`.
    virtual bool replays() const = 0;
    virtual void evaluated(const CentreOutcome&) {}
    // The outcome of centre k, evaluated by another run.
    virtual CentreOutcome given(long k) = 0;
};

} // namespace tobel
