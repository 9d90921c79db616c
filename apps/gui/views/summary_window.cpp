#include "views/summary_window.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "print/print_jobs.h"

namespace tobel::gui {

SummaryWindow::SummaryWindow(const Project& p, Port& port, QWidget* parent)
    : QWidget(parent), p_(p), port_(port), scroll_(new QScrollBar(Qt::Vertical))
{
    setWindowTitle("Search Summary");
    auto* column = new QVBoxLayout(this);
    auto* table = new QHBoxLayout;
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(2);
    for (int c = 0; c < 5; ++c) {
        auto* head = new QLabel(summary_headings[std::size_t(c)]);
        head->setAlignment(Qt::AlignCenter);
        grid->addWidget(head, 0, c + 1);
    }
    for (int r = 1; r <= summary_window_rows; ++r) {
        auto* label = new QLabel;
        label->setObjectName(QString("label%1").arg(r));
        label->setMinimumWidth(90);
        grid->addWidget(label, r, 0);
        labels_[std::size_t(r - 1)] = label;
        for (int c = 0; c < 5; ++c) {
            auto* e = new QLineEdit;
            e->setObjectName(QString("cell%1_%2").arg(r).arg(c));
            e->setAlignment(Qt::AlignRight);
            e->setMinimumWidth(100);
            grid->addWidget(e, r, c + 1);
            cells_[std::size_t(r - 1)][std::size_t(c)] = e;
            // What is typed goes through the number parser into the display
            // copy only.
            connect(e, &QLineEdit::editingFinished, this, [this, r, c, e] {
                if (filling_)
                    return;
                const int t = r + view_.top_trial - 1;
                summary_type_cell(view_, t, c, e->text().toStdString());
                refresh();
            });
        }
    }
    table->addLayout(grid, 1);
    scroll_->setObjectName("scroll");
    connect(scroll_, &QScrollBar::valueChanged, this, [this](int v) {
        if (filling_)
            return;
        summary_scroll(view_, v);
        refresh();
    });
    table->addWidget(scroll_);
    column->addLayout(table);

    auto* buttons = new QHBoxLayout;
    const char* captions[] = {"Print", "Save As", "Close"};
    for (int i = 0; i < 3; ++i) {
        auto* b = new QPushButton(captions[i]);
        b->setObjectName(QString("Command%1").arg(i + 1));
        buttons->addWidget(b);
        commands_[std::size_t(i)] = b;
    }
    buttons->addStretch(1);
    column->addLayout(buttons);
    connect(commands_[0], &QPushButton::clicked, this, [this] { print_search_summary(this, p_); });
    connect(commands_[1], &QPushButton::clicked, this, [this] { summary_save_as(p_, port_); });
    connect(commands_[2], &QPushButton::clicked, this, [this] { emit closed(); });
    open_table();
}

void SummaryWindow::open_table()
{
    view_ = summary_open(p_);
    refresh();
}

void SummaryWindow::refresh()
{
    filling_ = true;
    scroll_->setRange(1, std::max(1, summary_scroll_max(p_)));
    scroll_->setPageStep(summary_window_rows);
    scroll_->setValue(view_.top_trial);
    scroll_->setVisible(summary_scroll_visible(p_));
    const std::vector<SummaryRow> rows = summary_refresh(p_, view_);
    for (int r = 1; r <= summary_window_rows; ++r) {
        const SummaryRow& row = rows[std::size_t(r - 1)];
        QLabel* label = labels_[std::size_t(r - 1)];
        label->setText(QString::fromStdString(row.label));
        // The colour is 0xBBGGRR: 255 is red.
        const QColor colour(int(row.colour & 0xff), int((row.colour >> 8) & 0xff),
                            int((row.colour >> 16) & 0xff));
        label->setStyleSheet(QString("color: %1").arg(colour.name()));
        for (int c = 0; c < 5; ++c) {
            QLineEdit* e = cells_[std::size_t(r - 1)][std::size_t(c)];
            e->setText(QString::fromStdString(row.cells[std::size_t(c)]));
            // A row beyond the table is blank and takes nothing.
            e->setReadOnly(row.label.empty());
        }
    }
    filling_ = false;
}

} // namespace tobel::gui
