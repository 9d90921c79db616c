#include "forms/form_host.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

namespace tobel::gui {

void run_dialogs(QWidget* parent, Project& p, Port& port, DialogSession& s, const ImageStore*)
{
    while (dialog_open(s)) {
        QDialog d(parent);
        d.setWindowTitle(QString::fromStdString(dialog_caption(s)));
        auto* layout = new QVBoxLayout(&d);
        layout->addWidget(new QLabel(QString::fromStdString(dialog_caption(s)), &d));
        auto* box = new QDialogButtonBox(&d);
        box->addButton("Continue", QDialogButtonBox::AcceptRole);
        box->addButton("Cancel", QDialogButtonBox::RejectRole);
        layout->addWidget(box);
        QObject::connect(box, &QDialogButtonBox::accepted, &d, &QDialog::accept);
        QObject::connect(box, &QDialogButtonBox::rejected, &d, &QDialog::reject);
        if (d.exec() == QDialog::Accepted)
            dialog_continue(p, port, s);
        else
            dialog_cancel(p, port, s);
    }
}

} // namespace tobel::gui
