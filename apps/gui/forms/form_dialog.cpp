#include "forms/form_dialog.h"

#include <algorithm>
#include <optional>

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPalette>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "forms/form_picture.h"

namespace tobel::gui {

namespace {

QColor qt_colour(int c)
{
    return QColor(c & 255, (c >> 8) & 255, (c >> 16) & 255);
}

// The keys that move between cells.
std::optional<FormKey> form_key_of(int key)
{
    switch (key) {
    case Qt::Key_Up: return FormKey::up;
    case Qt::Key_Down: return FormKey::down;
    case Qt::Key_Left: return FormKey::left;
    case Qt::Key_Right: return FormKey::right;
    case Qt::Key_Return:
    case Qt::Key_Enter: return FormKey::enter;
    case Qt::Key_Tab: return FormKey::tab;
    default: return std::nullopt;
    }
}

} // namespace

FormDialog::FormDialog(QWidget* parent, Project& p, Port& port, DialogSession& s, const ImageStore* images)
    : QDialog(parent), p_(p), port_(port), s_(s), kind_(s.form.index())
{
    setModal(true);
    auto* outer = new QVBoxLayout(this);
    notes_ = new QLabel(this);
    notes_->setObjectName("notes");
    notes_->setWordWrap(true);
    outer->addWidget(notes_);

    auto* middle = new QHBoxLayout;
    outer->addLayout(middle, 1);
    view_ = describe_form(p_, s_);
    if (view_.picture != nullptr) {
        picture_ = new FormPicture(view_.picture, images, this);
        picture_->setObjectName("picture");
        if (view_.picture_fixed) {
            picture_->setFixedSize(int(view_.picture->device_width), int(view_.picture->device_height));
            middle->addWidget(picture_, 0, Qt::AlignTop);
        } else {
            middle->addWidget(picture_, 3);
        }
        connect(picture_, &FormPicture::pointer, this,
                [this](int action, int button, bool shift, double y, double e) {
                    dialog_pointer(p_, port_, s_, PointerAction(action), PointerButton(button), shift, y, e);
                    after_step();
                });
    }
    auto* side = new QVBoxLayout;
    middle->addLayout(side, 2);
    table_ = new QTableWidget(this);
    table_->setObjectName("cells");
    // The session edits the cells; the table only shows them.
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setTabKeyNavigation(false);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->installEventFilter(this);
    auto* table_row = new QHBoxLayout;
    table_row->setSpacing(0);
    table_row->addWidget(table_, 1);
    table_scroll_ = new QScrollBar(Qt::Vertical, this);
    table_scroll_->setObjectName("table-scroll");
    table_scroll_->setPageStep(1);
    table_row->addWidget(table_scroll_);
    table_row->addStretch(0);
    side->addLayout(table_row, 1);
    connect(table_scroll_, &QScrollBar::valueChanged, this, [this](int value) {
        dialog_choose(p_, port_, s_, value);
        after_step();
    });
    connect(table_, &QTableWidget::cellClicked, this, [this](int r, int c) {
        dialog_select(p_, port_, s_, view_.first_row + r, view_.first_col + c);
        after_step();
    });

    options_box_ = new QGroupBox(this);
    options_layout_ = new QVBoxLayout(options_box_);
    side->addWidget(options_box_);
    swatch_ = new QLabel(this);
    swatch_->setObjectName("swatch");
    swatch_->setFixedSize(48, 32);
    swatch_->setFrameStyle(QFrame::Box | QFrame::Plain);
    swatch_->setAutoFillBackground(true);
    side->addWidget(swatch_);
    scroll_label_ = new QLabel(this);
    scroll_label_->setObjectName("scroll-label");
    side->addWidget(scroll_label_);
    scroll_ = new QScrollBar(Qt::Horizontal, this);
    scroll_->setObjectName("scroll");
    side->addWidget(scroll_);
    connect(scroll_, &QScrollBar::valueChanged, this, [this](int value) {
        dialog_choose(p_, port_, s_, value);
        after_step();
    });

    auto* row = new QHBoxLayout;
    buttons_layout_ = new QGridLayout;
    row->addLayout(buttons_layout_);
    row->addStretch(1);
    auto* go_on = new QPushButton(this);
    go_on->setObjectName("continue");
    auto* cancel = new QPushButton(this);
    cancel->setObjectName("cancel");
    continue_ = go_on;
    cancel_ = cancel;
    for (QPushButton* b : {go_on, cancel}) {
        // Enter belongs to the cells, not to a default button.
        b->setAutoDefault(false);
        b->setDefault(false);
        row->addWidget(b);
    }
    outer->addLayout(row);
    connect(go_on, &QPushButton::clicked, this, [this] {
        dialog_continue(p_, port_, s_);
        after_step();
    });
    connect(cancel, &QPushButton::clicked, this, &FormDialog::reject);
    refresh();
    table_->setFocus();
}

void FormDialog::reject()
{
    if (ended_) {
        QDialog::reject();
        return;
    }
    dialog_cancel(p_, port_, s_);
    after_step();
}

void FormDialog::after_step()
{
    if (!dialog_open(s_) || s_.form.index() != kind_) {
        ended_ = true;
        done(QDialog::Accepted);
        return;
    }
    refresh();
}

void FormDialog::press(const std::string& name, int arg)
{
    dialog_button(p_, port_, s_, name, arg);
    after_step();
}

void FormDialog::place_button(QWidget* w)
{
    constexpr int buttons_per_row = 9;
    buttons_layout_->addWidget(w, button_count_ / buttons_per_row, button_count_ % buttons_per_row);
    ++button_count_;
}

QPushButton* FormDialog::button_for(const FormButton& b)
{
    auto it = buttons_.find(b.name);
    if (it != buttons_.end())
        return it->second;
    auto* w = new QPushButton(this);
    w->setObjectName(QString::fromStdString("button-" + b.name));
    w->setAutoDefault(false);
    const std::string name = b.name;
    connect(w, &QPushButton::clicked, this, [this, name] {
        int arg = 0;
        for (const FormButton& x : view_.buttons)
            if (x.name == name)
                arg = x.arg;
        press(name, arg);
    });
    place_button(w);
    buttons_[b.name] = w;
    return w;
}

QRadioButton* FormDialog::option_for(const FormOption& o)
{
    auto it = options_.find(o.choice);
    if (it != options_.end())
        return it->second;
    auto* w = new QRadioButton(options_box_);
    w->setObjectName(QString("option%1").arg(o.choice));
    // The form says which option is on; the buttons do not switch each other.
    w->setAutoExclusive(false);
    const int choice = o.choice;
    connect(w, &QRadioButton::clicked, this, [this, choice] {
        dialog_choose(p_, port_, s_, choice);
        after_step();
    });
    options_layout_->addWidget(w);
    options_[o.choice] = w;
    return w;
}

QToolButton* FormDialog::menu_for(const FormMenu& m)
{
    auto it = menus_.find(m.name);
    if (it != menus_.end())
        return it->second;
    auto* w = new QToolButton(this);
    w->setObjectName(QString::fromStdString("menu-" + m.name));
    w->setPopupMode(QToolButton::InstantPopup);
    w->setMenu(new QMenu(w));
    place_button(w);
    menus_[m.name] = w;
    return w;
}

void FormDialog::refresh()
{
    view_ = describe_form(p_, s_);
    setWindowTitle(QString::fromStdString(dialog_caption(s_)));
    notes_->setText(view_.notes.join("\n"));
    notes_->setVisible(!view_.notes.isEmpty());

    // The cells.
    const QSignalBlocker block_table(table_);
    const int rows = int(view_.cells.size());
    int cols = 0;
    for (const auto& r : view_.cells)
        cols = std::max(cols, int(r.size()));
    table_->setRowCount(rows);
    table_->setColumnCount(cols);
    table_->setVisible(rows > 0);
    table_->setHorizontalHeaderLabels(view_.column_titles);
    table_->horizontalHeader()->setVisible(!view_.column_titles.isEmpty());
    table_->setVerticalHeaderLabels(view_.row_titles);
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < cols; ++c) {
            const auto& row = view_.cells[std::size_t(r)];
            auto* item = new QTableWidgetItem(c < int(row.size()) ? row[std::size_t(c)] : QString());
            item->setFlags(c < int(row.size()) ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags);
            if (std::size_t(r) < view_.colours.size() &&
                std::size_t(c) < view_.colours[std::size_t(r)].size())
                item->setBackground(qt_colour(view_.colours[std::size_t(r)][std::size_t(c)]));
            table_->setItem(r, c, item);
        }
    table_->resizeColumnsToContents();
    // No wider than its columns: the scroll bar beside it stays at its edge.
    int width = 2 * table_->frameWidth() + table_->verticalHeader()->sizeHint().width();
    for (int c = 0; c < cols; ++c)
        width += table_->columnWidth(c);
    if (table_->verticalScrollBar()->isVisible())
        width += table_->verticalScrollBar()->sizeHint().width();
    table_->setMaximumWidth(std::max(width, 60));
    const int cr = view_.current_row - view_.first_row, cc = view_.current_col - view_.first_col;
    if (view_.current_row > 0 && cr >= 0 && cr < rows && cc >= 0 && cc < cols)
        table_->setCurrentCell(cr, cc);
    else
        table_->clearSelection();

    // The options.
    options_box_->setTitle(view_.options_title);
    options_box_->setVisible(!view_.options.empty());
    for (auto& [choice, w] : options_)
        w->setVisible(false);
    for (const FormOption& o : view_.options) {
        QRadioButton* w = option_for(o);
        const QSignalBlocker block(w);
        w->setText(o.label);
        w->setChecked(o.checked);
        w->setVisible(true);
    }

    {
        const QSignalBlocker block(scroll_);
        scroll_->setVisible(view_.scroll);
        scroll_->setRange(view_.scroll_min, view_.scroll_max);
        scroll_->setValue(view_.scroll_value);
    }
    scroll_label_->setText(view_.scroll_label);
    scroll_label_->setVisible(view_.scroll && !view_.scroll_label.isEmpty());
    {
        const QSignalBlocker block(table_scroll_);
        table_scroll_->setVisible(view_.table_scroll && rows > 0);
        table_scroll_->setRange(1, std::max(1, view_.table_scroll_max));
        table_scroll_->setValue(view_.table_scroll_value);
    }
    swatch_->setVisible(view_.swatch >= 0);
    if (view_.swatch >= 0) {
        QPalette palette = swatch_->palette();
        palette.setColor(QPalette::Window, qt_colour(view_.swatch));
        swatch_->setPalette(palette);
    }
    continue_->setText(view_.continue_label);
    cancel_->setText(view_.cancel_label);

    // The buttons and menus.
    for (auto& [name, w] : buttons_)
        w->setVisible(false);
    for (const FormButton& b : view_.buttons) {
        QPushButton* w = button_for(b);
        w->setText(b.label);
        w->setEnabled(b.enabled);
        w->setVisible(true);
    }
    for (auto& [name, w] : menus_)
        w->setVisible(false);
    for (const FormMenu& m : view_.menus) {
        QToolButton* w = menu_for(m);
        w->setText(m.label);
        w->menu()->clear();
        for (const auto& [caption, target] : m.items) {
            const std::string name = m.name;
            const int arg = target;
            QAction* a = w->menu()->addAction(caption);
            connect(a, &QAction::triggered, this, [this, name, arg] { press(name, arg); });
        }
        w->setVisible(true);
    }

    if (picture_ != nullptr) {
        picture_->set_list(view_.picture);
        picture_->update();
    }
}

bool FormDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != table_ || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    auto* k = static_cast<QKeyEvent*>(event);
    if (k->key() == Qt::Key_Escape)
        return false;
    if (const auto key = form_key_of(k->key())) {
        dialog_key(p_, port_, s_, *key);
    } else if (k->key() == Qt::Key_Backspace) {
        dialog_type(p_, port_, s_, '\b');
    } else {
        const QByteArray text = k->text().toLatin1();
        if (text.isEmpty())
            return false;
        for (char c : text) {
            dialog_type(p_, port_, s_, c);
            if (!dialog_open(s_) || s_.form.index() != kind_)
                break;
        }
    }
    after_step();
    return true;
}

} // namespace tobel::gui
