#include "print/report_dialogs.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>
#include <memory>

#include "graphics/recording_surface.h"
#include "print/page_printer.h"
#include "qt/replay.h"

namespace tobel::gui {

ReportGraphicsDialog::ReportGraphicsDialog(QWidget* parent, const Project& p, Port& port)
    : QDialog(parent), project_(p), port_(port), form_(open_report_graphics_form())
{
    setWindowTitle(report_graphics_caption);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(report_graphics_question, this));
    auto* group = new QButtonGroup(this);
    for (int i = 1; i <= 5; ++i) {
        auto* option = new QRadioButton(report_graphic_choices[std::size_t(i - 1)], this);
        options_[std::size_t(i - 1)] = option;
        group->addButton(option, i);
        layout->addWidget(option);
    }
    options_[std::size_t(form_.choice - 1)]->setChecked(true);
    connect(group, &QButtonGroup::idClicked, this, [this](int id) { form_.choice = id; });
    auto* buttons = new QHBoxLayout;
    continue_ = new QPushButton(report_graphics_continue, this);
    cancel_ = new QPushButton(report_graphics_cancel, this);
    continue_->setDefault(true);
    buttons->addStretch();
    buttons->addWidget(continue_);
    buttons->addWidget(cancel_);
    layout->addLayout(buttons);
    connect(continue_, &QPushButton::clicked, this, [this] { on_continue(); });
    connect(cancel_, &QPushButton::clicked, this, [this] {
        cancel_report_graphics(form_);
        reject();
    });
}

void ReportGraphicsDialog::on_continue()
{
    // An error box leaves the dialog open for another choice.
    if (continue_report_graphics(project_, port_, form_))
        accept();
}

PageView::PageView(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void PageView::set_page(DisplayList list)
{
    page_ = std::move(list);
    setFixedSize(sizeHint());
    update();
}

QSize PageView::sizeHint() const
{
    return {int(page_.device_width + 0.5f), int(page_.device_height + 0.5f)};
}

void PageView::paintEvent(QPaintEvent*)
{
    prepare_page_fonts();
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    replay(page_, painter, QSizeF(width(), height()));
}

ReportPreviewDialog::ReportPreviewDialog(QWidget* parent, const Project& p, const ReportContext& ctx,
                                         const DisplayList* graphic)
    : QDialog(parent), project_(p), context_(ctx), graphic_(graphic)
{
    setWindowTitle("Print Preview");
    auto* layout = new QVBoxLayout(this);
    auto* buttons = new QHBoxLayout;
    print_ = new QPushButton("Print", this);
    cancel_ = new QPushButton("Cancel", this);
    previous_ = new QPushButton("<", this);
    next_ = new QPushButton(">", this);
    previous_->setToolTip("Previous page");
    next_->setToolTip("Next page");
    buttons->addWidget(print_);
    buttons->addWidget(cancel_);
    buttons->addStretch();
    page_label_ = new QLabel(this);
    buttons->addWidget(page_label_);
    buttons->addWidget(previous_);
    buttons->addWidget(next_);
    layout->addLayout(buttons);
    view_ = new PageView(this);
    layout->addWidget(view_, 0, Qt::AlignHCenter);
    // A taller window leaves its room under the page, not between the page
    // and its buttons.
    layout->addStretch(1);
    connect(print_, &QPushButton::clicked, this, [this] { on_print(); });
    connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
    connect(previous_, &QPushButton::clicked, this, [this] {
        if (report_previous_page(state_))
            draw_page();
    });
    connect(next_, &QPushButton::clicked, this, [this] {
        if (report_next_page(state_, more_))
            draw_page();
    });
    clear_page_marks(state_);
    draw_page();
}

// Cls and the page again, at the preview's multiplier.
void ReportPreviewDialog::draw_page()
{
    DisplayList list;
    const PageSize size = page_device_size(preview_multiplier);
    list.device_width = size.width;
    list.device_height = size.height;
    {
        RecordingSurface surface(list);
        more_ = draw_report(surface, state_, state_.report_page, false, project_, context_, graphic_);
    }
    view_->set_page(std::move(list));
    page_label_->setText(QString("Page %1").arg(state_.report_page));
    previous_->setEnabled(state_.report_page > 1);
    next_->setEnabled(more_);
}

void ReportPreviewDialog::on_print()
{
    if (print_report_pages(this, project_, context_, graphic_))
        accept();
}

bool print_report_pages(QWidget* parent, const Project& p, const ReportContext& ctx,
                        const DisplayList* graphic)
{
    auto state = std::make_shared<ReportPages>();
    clear_page_marks(*state);
    return print_with_dialog(parent, [state, &p, &ctx, graphic](DrawSurface& s, int page) {
        state->report_page = std::int16_t(page);
        ++state->page_count;
        return draw_report(s, *state, page, true, p, ctx, graphic);
    });
}

} // namespace tobel::gui
