#include "forms/form_host.h"

#include "forms/form_dialog.h"

namespace tobel::gui {

void run_dialogs(QWidget* parent, Project& p, Port& port, DialogSession& s, const ImageStore* images)
{
    while (dialog_open(s)) {
        FormDialog d(parent, p, port, s, images);
        d.exec();
        // A dialog closed by other means than its own steps cancels its form,
        // so that the loop always moves on.
        if (!d.form_ended() && dialog_open(s))
            dialog_cancel(p, port, s);
    }
}

} // namespace tobel::gui
