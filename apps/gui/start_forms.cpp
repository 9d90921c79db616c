#include "start_forms.h"

#include <QDialog>
#include <QEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QVBoxLayout>

namespace tobel::gui {

namespace {

// Any click on the form, its picture or its text closes it.
class ClickCloses : public QObject {
  public:
    explicit ClickCloses(QDialog* d) : QObject(d), dialog_(d) {}
    bool eventFilter(QObject*, QEvent* e) override
    {
        if (e->type() == QEvent::MouseButtonPress) {
            dialog_->accept();
            return true;
        }
        return false;
    }

  private:
    QDialog* dialog_;
};

} // namespace

void show_title_form(QWidget* parent)
{
    QDialog d(parent, Qt::Dialog | Qt::FramelessWindowHint);
    d.setModal(true);
    d.setStyleSheet("QDialog { background: #1f3f6f; border: 2px solid #c8d4e6; } QLabel { color: white; }");
    auto* layout = new QVBoxLayout(&d);
    layout->setContentsMargins(48, 36, 48, 36);
    auto* title = new QLabel("TOBEL-3", &d);
    QFont big = title->font();
    big.setPointSize(36);
    big.setBold(true);
    title->setFont(big);
    title->setAlignment(Qt::AlignCenter);
    auto* line = new QLabel("Version 1", &d);
    line->setAlignment(Qt::AlignCenter);
    layout->addWidget(title);
    layout->addWidget(line);
    auto* filter = new ClickCloses(&d);
    d.installEventFilter(filter);
    title->installEventFilter(filter);
    line->installEventFilter(filter);
    d.adjustSize();
    if (parent != nullptr)
        d.move(parent->geometry().center() - d.rect().center());
    d.exec();
}

int show_start_form(QWidget* parent)
{
    QDialog d(parent);
    d.setWindowTitle("TOB Start");
    d.setModal(true);
    auto* layout = new QVBoxLayout(&d);
    int chosen = 0;
    const char* captions[] = {"Create a New File", "Open an Existing File", "Other"};
    for (int i = 0; i < 3; ++i) {
        auto* b = new QPushButton(captions[i], &d);
        b->setObjectName(QString("Command%1").arg(i + 1));
        b->setMinimumWidth(220);
        if (i == 2)
            b->setToolTip("Enable Menu");
        QObject::connect(b, &QPushButton::clicked, &d, [&d, &chosen, i] {
            chosen = i + 1;
            d.accept();
        });
        layout->addWidget(b);
    }
    d.exec();
    return chosen;
}

} // namespace tobel::gui
