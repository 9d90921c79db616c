#include "main_window.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDialog>
#include <QFile>
#include <QFontDatabase>
#include <QFrame>
#include <QGuiApplication>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QStatusBar>
#include <QTextBrowser>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>
#include <ctime>

#include "commands/commands.h"
#include "commands/graphics_commands.h"
#include "commands/menu_model.h"
#include "commands/search_commands.h"
#include "commands/search_picture.h"
#include "forms/form_host.h"
#include "graphics/plan_active.h"
#include "graphics/section_views.h"
#include "graphics/xray.h"
#include "print/print_jobs.h"
#include "search/trial.h"
#include "start_forms.h"
#include "views/picture_window.h"
#include "views/search_info_window.h"
#include "views/summary_window.h"

namespace tobel::gui {

namespace {

QString qs(const std::string& s)
{
    return QString::fromStdString(s);
}

// The arrays of the menu and the submenus that hold them.
constexpr std::pair<const char*, const char*> array_menus[] = {
    {"FileName", "RecentFiles"},
    {"Graphics_Isometry_Layer", "Graphics_Isometry"},
    {"grd_layer1", "Export_Graphics_Isometry"},
};

bool is_array_item(const std::string& item)
{
    return item.find('(') != std::string::npos;
}

// Today's date in the system's short form, for Control Parameters.
std::string today_text()
{
    const std::time_t now = std::time(nullptr);
    char buf[32] = {};
    std::strftime(buf, sizeof buf, "%x", std::localtime(&now));
    return buf;
}

// The help file: installed beside the program, else in the source tree.
QString manual_path()
{
    const QString installed = QCoreApplication::applicationDirPath() + "/../share/tobel/manual.html";
    if (QFile::exists(installed))
        return installed;
#ifdef TOBEL_SOURCE_DIR
    const QString source = QString(TOBEL_SOURCE_DIR) + "/docs/manual.html";
    if (QFile::exists(source))
        return source;
#endif
    return {};
}

} // namespace

MainWindow::MainWindow(Project& p, Options options, QWidget* parent)
    : QMainWindow(parent), p_(p), options_(options), port_(*this, p), menu_ctx_{session_, this, false},
      mdi_(new QMdiArea(this)), stop_button_(new QPushButton("Stop")), pause_button_(new QPushButton("Pause"))
{
    // Load: hides the project menus, sets the method, reads the settings,
    // lays down the defaults.
    main_load(p_);
    session_.today = today_text();

    mdi_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mdi_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(mdi_);
    connect(mdi_, &QMdiArea::subWindowActivated, this, [this](QMdiSubWindow* sw) {
        // The section window regaining focus decides the title and view_mode.
        if (sw == nullptr || long_run_)
            return;
        const auto it = picture_children_.find(&p_.pictures.section);
        if (it != picture_children_.end() && it->second == sw) {
            picture_activated(p_);
            setWindowTitle(qs(p_.main_caption));
        }
    });

    build_menus();

    // The method box: four labels stacked, the current method on top.
    auto* box = new QFrame;
    box->setFrameShape(QFrame::StyledPanel);
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(6, 2, 6, 2);
    column->setSpacing(0);
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    for (int i = 0; i < 4; ++i) {
        auto* label = new QLabel(box);
        QFont f = fixed;
        f.setBold(i == 0);
        label->setFont(f);
        if (i > 0) {
            label->setCursor(Qt::PointingHandCursor);
            label->installEventFilter(this);
        }
        column->addWidget(label);
        method_labels_[i] = label;
    }
    auto* bar = addToolBar("Method");
    bar->setObjectName("method_box");
    bar->setMovable(false);
    bar->addWidget(box);

    // The buttons of a long run, shown only while one is under way.
    stop_button_->setObjectName("stop");
    pause_button_->setObjectName("pause");
    statusBar()->addPermanentWidget(pause_button_);
    statusBar()->addPermanentWidget(stop_button_);
    pause_button_->hide();
    stop_button_->hide();
    connect(stop_button_, &QPushButton::clicked, this, &MainWindow::press_stop);
    connect(pause_button_, &QPushButton::clicked, this, &MainWindow::press_pause);

    resize(1100, 760);
    refresh();
}

MainWindow::~MainWindow()
{
    if (info_child_ != nullptr)
        info_child_->removeEventFilter(this);
    // The child windows go after the maps that know them.
    for (QMdiSubWindow* sw : mdi_->subWindowList())
        sw->disconnect(this);
}

void MainWindow::build_menus()
{
    std::set<std::string> submenus;
    for (const auto& control : p_.menus.order)
        submenus.insert(menu_parent(p_, control));
    for (const auto& [array, parent] : array_menus)
        submenus.insert(parent);
    for (const auto& control : p_.menus.order) {
        const MenuItem& item = p_.menus.at(control);
        const std::string parent = menu_parent(p_, control);
        if (parent.empty()) {
            QMenu* m = menuBar()->addMenu(qs(item.caption));
            menus_[control] = m;
            actions_[control] = m->menuAction();
        } else if (is_array_item(control)) {
            continue; // filled by refresh_menus
        } else if (submenus.count(control)) {
            QMenu* m = menus_.at(parent)->addMenu(qs(item.caption));
            menus_[control] = m;
            actions_[control] = m->menuAction();
        } else {
            QAction* a = menus_.at(parent)->addAction(qs(item.caption));
            if (control == "grid")
                a->setCheckable(true);
            // Queued: the command may rebuild the menu that holds the action.
            connect(
                a, &QAction::triggered, this, [this, control] { choose(control); }, Qt::QueuedConnection);
            actions_[control] = a;
        }
    }
    connect(menus_.at("Graphics"), &QMenu::aboutToShow, this, [this] { choose("Graphics"); });
    connect(menus_.at("window"), &QMenu::aboutToShow, this, &MainWindow::fill_window_menu);
}

void MainWindow::fill_array_menu(const std::string& array, QMenu* menu)
{
    for (auto it = actions_.begin(); it != actions_.end();)
        it = it->first.rfind(array + "(", 0) == 0 ? actions_.erase(it) : std::next(it);
    menu->clear();
    for (const auto& control : p_.menus.order) {
        if (control.rfind(array + "(", 0) != 0)
            continue;
        const int index = std::stoi(control.substr(array.size() + 1));
        QAction* a = menu->addAction(qs(p_.menus.at(control).caption));
        a->setCheckable(array == "Graphics_Isometry_Layer");
        connect(
            a, &QAction::triggered, this, [this, array, index] { choose(array, index); },
            Qt::QueuedConnection);
        actions_[control] = a;
    }
}

void MainWindow::fill_window_menu()
{
    QMenu* m = menus_.at("window");
    m->clear();
    m->addAction("&Cascade", mdi_, &QMdiArea::cascadeSubWindows);
    m->addAction("&Tile", mdi_, &QMdiArea::tileSubWindows);
    m->addSeparator();
    int n = 0;
    for (QMdiSubWindow* sw : mdi_->subWindowList()) {
        QAction* a = m->addAction(QString("&%1 %2").arg(++n).arg(sw->windowTitle()));
        a->setCheckable(true);
        a->setChecked(sw == mdi_->currentSubWindow());
        connect(a, &QAction::triggered, this, [this, sw] { mdi_->setActiveSubWindow(sw); });
    }
}

void MainWindow::refresh_menus()
{
    for (const auto& [array, parent] : array_menus)
        fill_array_menu(array, menus_.at(parent));
    for (const auto& [control, action] : actions_) {
        const auto it = p_.menus.items.find(control);
        if (it == p_.menus.items.end())
            continue;
        const MenuItem& item = it->second;
        action->setText(qs(item.caption));
        action->setVisible(item.visible);
        // While a long run is under way nothing that changes the project can
        // be chosen; the Window menu stays.
        action->setEnabled(item.enabled && (!long_run_ || control == "window"));
        if (action->isCheckable())
            action->setChecked(item.checked);
    }
}

void MainWindow::refresh()
{
    setWindowTitle(qs(p_.main_caption));
    sync_search_info();
    // The summary of a search that New or Open cleared goes with it.
    if (summary_child_ != nullptr && p_.search.summary_count == 0)
        summary_child_->hide();
    for (int i = 0; i < 4; ++i)
        method_labels_[i]->setText(qs(p_.method_labels[std::size_t(i + 1)]));
    refresh_menus();
    sync_windows();
    run_xray_timer();
}

void MainWindow::run_xray_timer()
{
    const XrayState& x = p_.pictures.xray_state;
    if (PictureView* v = picture_view(p_.pictures.xray)) {
        if (auto* b = v->findChild<QPushButton*>("Stop"))
            b->setVisible(x.stop_visible);
        if (auto* b = v->findChild<QPushButton*>("Continue"))
            b->setVisible(x.continue_visible);
    }
    if (!x.timer_on || !p_.pictures.xray.exists) {
        if (xray_timer_)
            xray_timer_->stop();
        return;
    }
    if (!xray_timer_) {
        xray_timer_ = new QTimer(this);
        xray_timer_->setInterval(xray_timer_ms);
        connect(xray_timer_, &QTimer::timeout, this, &MainWindow::xray_tick);
    }
    if (!xray_timer_->isActive())
        xray_timer_->start();
}

// One row of the x-ray animation; after the last one the timer stops and
// both buttons go, as the core's state says.
void MainWindow::xray_tick()
{
    if (!p_.pictures.xray_state.timer_on || !p_.pictures.xray.exists) {
        xray_timer_->stop();
        return;
    }
    xray_step(p_);
    if (PictureView* v = picture_view(p_.pictures.xray))
        v->canvas()->update();
    if (!p_.pictures.xray_state.timer_on)
        run_xray_timer();
}

QAction* MainWindow::action(const std::string& item) const
{
    const auto it = actions_.find(item);
    return it == actions_.end() ? nullptr : it->second;
}

void MainWindow::take_picture_size()
{
    // New pictures take the size of the client area, less a child's frame,
    // title and the row of its scroll bar.
    const QSize s = mdi_->viewport()->size();
    if (s.width() > 200 && s.height() > 200) {
        p_.view.picture_width = float(s.width() - 12);
        p_.view.picture_height = float(s.height() - 64);
    }
}

void MainWindow::set_running(bool on, bool search)
{
    long_run_ = on;
    stop_button_->setVisible(on);
    pause_button_->setVisible(on && search);
    refresh_menus();
    if (!on)
        statusBar()->clearMessage();
}

MenuResult MainWindow::choose(const std::string& control, int index)
{
    if (long_run_)
        return MenuResult::busy;
    take_picture_size();
    texts_written_.clear();
    const std::string caption_before = p_.main_caption;
    const bool long_run = is_long_run(control) && menu_item_available(p_, control);
    if (long_run)
        set_running(true, control != "Solve_single_trial");
    const MenuResult r = run_menu_command(p_, port_, menu_ctx_, control, index);
    if (long_run)
        set_running(false, false);
    // The text windows of a project that New or Open replaced.
    const bool replaced =
        control == "file_new" || control == "File_open" || control == "TODfile_Open" || control == "FileName";
    if (replaced && p_.main_caption != caption_before) {
        for (auto it = text_children_.begin(); it != text_children_.end();) {
            QMdiSubWindow* sw = it->second;
            if (texts_written_.count(it->first)) {
                ++it;
                continue;
            }
            it = text_children_.erase(it);
            sw->disconnect(this);
            sw->close();
        }
    }
    run_forms();
    refresh();
    return r;
}

// A surface form confirmed shows the Solve menu with its items, and they can
// be chosen: the section editor disables Single Trial Surface when it leaves
// a section and nothing enables it again, so the program does it here.
void MainWindow::enable_solve_items()
{
    if (!p_.surface_defined || !p_.menus["Solve"].visible)
        return;
    for (const char* c : {"Solve_single_trial", "gridsearchsolv", "autosearchsolv"})
        if (p_.menus[c].visible)
            p_.menus[c].enabled = true;
}

void MainWindow::run_forms()
{
    if (!options_.show_forms || !dialog_open(session_))
        return;
    const DialogForm& f = session_.form;
    const bool surface_form =
        std::holds_alternative<EllipsoidForm>(f) || std::holds_alternative<WedgeForm>(f) ||
        std::holds_alternative<GeneralSurfaceForm>(f) || std::holds_alternative<GridSearchForm>(f) ||
        std::holds_alternative<AutoSearchForm>(f);
    run_dialogs(this, p_, port_, session_, &port_.images());
    if (surface_form)
        enable_solve_items();
    refresh();
}

void MainWindow::continue_form()
{
    const DialogForm& f = session_.form;
    const bool surface_form =
        std::holds_alternative<EllipsoidForm>(f) || std::holds_alternative<WedgeForm>(f) ||
        std::holds_alternative<GeneralSurfaceForm>(f) || std::holds_alternative<GridSearchForm>(f) ||
        std::holds_alternative<AutoSearchForm>(f);
    dialog_continue(p_, port_, session_);
    if (surface_form)
        enable_solve_items();
    run_forms();
    refresh();
}

void MainWindow::start_button(int button)
{
    if (button == 2) {
        choose("File_open");
        return;
    }
    take_picture_size();
    start_form_button(p_, port_, session_, button);
    run_forms();
    refresh();
}

void MainWindow::press_stop()
{
    // Stop while the paused panel waits is its Exit.
    if (pause_loop_ != nullptr) {
        search_info_button(3);
        return;
    }
    port_.request_stop();
}

void MainWindow::press_pause()
{
    if (p_.search.running && pause_loop_ == nullptr) {
        search_pause(p_);
        sync_search_info();
    }
}

void MainWindow::attach_pointer(PictureWindow* w, PictureView* view)
{
    PictureCanvas* canvas = view->canvas();
    if (w == &p_.pictures.plan_active) {
        // The press, and each column a drag crosses, prints the column's
        // data beside the plan (the canvas's x runs along Y, its y along X).
        auto show = [this, view](double x, double y) {
            plan_click(p_, x, y);
            view->refresh();
        };
        connect(canvas, &PictureCanvas::pointer_pressed, this, show);
        connect(canvas, &PictureCanvas::pointer_dragged, this, show);
    } else if (w == &p_.pictures.search) {
        // The set-up handles: the press opens the form of the set-up in the
        // session and takes a handle; the drag moves it; the release brings
        // the form up.
        connect(canvas, &PictureCanvas::pointer_pressed, this, [this, view](double x, double y) {
            if (long_run_)
                return;
            if (search_picture_down(p_, port_, session_, x, y))
                view->refresh();
        });
        connect(canvas, &PictureCanvas::pointer_dragged, this, [this, view](double x, double y) {
            if (long_run_)
                return;
            search_picture_move(p_, port_, session_, x, y);
            view->refresh();
        });
        connect(canvas, &PictureCanvas::pointer_released, this,
                [this](double x, double y) { search_picture_released(x, y); });
    }
}

void MainWindow::search_picture_released(double x, double y)
{
    switch (search_picture_up(p_, port_, session_, x, y)) {
    case SetupDialog::ellipsoid:
    case SetupDialog::grid_search:
    case SetupDialog::auto_search:
        if (long_run_)
            return;
        run_forms();
        refresh();
        return;
    case SetupDialog::search_information:
        p_.search.panel_open = -1;
        sync_search_info();
        return;
    case SetupDialog::none: return;
    }
}

QRect MainWindow::search_picture_rect() const
{
    const auto it = picture_children_.find(&p_.pictures.search);
    if (it != picture_children_.end() && it->second->isVisible())
        return it->second->geometry();
    return mdi_->viewport()->rect();
}

// On closing, the place the user moved the window to becomes the fractions.
void MainWindow::take_panel_place()
{
    if (info_child_ == nullptr || !info_moved_)
        return;
    const QRect pic = search_picture_rect();
    if (pic.width() <= 0 || pic.height() <= 0)
        return;
    p_.search.panel_left = float(info_child_->x() - pic.x()) / float(pic.width());
    p_.search.panel_top = float(info_child_->y() - pic.y()) / float(pic.height());
    info_moved_ = false;
}

void MainWindow::sync_search_info()
{
    const bool want = p_.search.panel_open != 0 && (p_.pictures.search.exists || pause_loop_ != nullptr);
    if (!want) {
        if (info_child_ != nullptr && info_child_->isVisible()) {
            take_panel_place();
            info_child_->hide();
        }
        return;
    }
    if (info_ == nullptr) {
        info_ = new SearchInfoWindow(p_);
        connect(info_, &SearchInfoWindow::pressed, this, &MainWindow::search_info_button);
        // Over the search picture whichever child is active.
        info_child_ =
            mdi_->addSubWindow(info_, Qt::SubWindow | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                          Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint);
        info_child_->setObjectName("search_info");
        info_child_->setWindowTitle("Search Information");
        info_child_->installEventFilter(this);
        connect(info_child_, &QObject::destroyed, this, [this] {
            info_child_ = nullptr;
            info_ = nullptr;
        });
    }
    info_->refresh(pause_loop_ != nullptr);
    if (!info_child_->isVisible()) {
        // panel_left and panel_top of the picture's width and height, kept
        // inside the client area.
        placing_info_ = true;
        info_child_->adjustSize();
        info_child_->resize(std::max(info_child_->width(), 320), info_child_->height());
        const QRect pic = search_picture_rect();
        const QSize area = mdi_->viewport()->size();
        int x = pic.x() + int(double(p_.search.panel_left) * pic.width());
        int y = pic.y() + int(double(p_.search.panel_top) * pic.height());
        x = std::clamp(x, 0, std::max(0, area.width() - info_child_->width()));
        y = std::clamp(y, 0, std::max(0, area.height() - info_child_->height()));
        info_child_->move(x, y);
        info_child_->show();
        placing_info_ = false;
        info_moved_ = false;
    }
    info_child_->raise();
}

Answer MainWindow::paused_panel()
{
    if (pause_loop_ != nullptr)
        return Answer::ok;
    QEventLoop loop;
    pause_loop_ = &loop;
    pause_answer_ = Answer::ok;
    // The search set panel_open: the panel comes up with Continue and Exit.
    sync_search_info();
    // Modal: the other child windows and the run's buttons wait.
    std::vector<QPointer<QMdiSubWindow>> held;
    for (QMdiSubWindow* sw : mdi_->subWindowList())
        if (sw != info_child_ && sw->isEnabled()) {
            sw->setEnabled(false);
            held.emplace_back(sw);
        }
    pause_button_->setEnabled(false);
    if (info_child_ != nullptr)
        mdi_->setActiveSubWindow(info_child_);
    loop.exec();
    pause_loop_ = nullptr;
    for (const auto& sw : held)
        if (sw)
            sw->setEnabled(true);
    pause_button_->setEnabled(true);
    if (info_ != nullptr)
        info_->refresh(false);
    return pause_answer_;
}

void MainWindow::search_info_button(int command)
{
    SearchState& s = p_.search;
    switch (command) {
    case 1:
        if (s.panel_caption == "Tentative Critical Surface") {
            // A normal interactive solution of the best surface.
            if (long_run_)
                return;
            take_picture_size();
            set_running(true, false);
            solve_final_surface(p_, port_);
            set_running(false, false);
            refresh();
        } else if (pause_loop_ == nullptr) {
            search_pause(p_);
            sync_search_info();
        }
        return;
    case 2:
    case 3:
        if (pause_loop_ == nullptr)
            return;
        if (command == 2) {
            search_continue(p_);
            pause_answer_ = Answer::ok;
        } else {
            search_exit(p_);
            pause_answer_ = Answer::cancel;
        }
        pause_loop_->quit();
        return;
    case 4: show_search_summary(); return;
    default: return;
    }
}

void MainWindow::show_search_summary()
{
    if (summary_ == nullptr) {
        summary_ = new SummaryWindow(p_, port_);
        summary_child_ = mdi_->addSubWindow(summary_);
        summary_child_->setObjectName("search_summary");
        summary_child_->setWindowTitle("Search Summary");
        summary_child_->resize(760, 340);
        // Close hides the form.
        connect(summary_, &SummaryWindow::closed, this, [this] { summary_child_->hide(); });
        connect(summary_child_, &QObject::destroyed, this, [this] {
            summary_child_ = nullptr;
            summary_ = nullptr;
        });
    }
    summary_->open_table();
    summary_child_->show();
    summary_child_->raise();
    mdi_->setActiveSubWindow(summary_child_);
}

PictureWindow* MainWindow::picture_by_caption(const std::string& caption)
{
    Pictures& ps = p_.pictures;
    for (PictureWindow* w :
         {&ps.section, &ps.isometry, &ps.search, &ps.plan_active, &ps.xray, &ps.result, &ps.editor})
        if (w->exists && w->caption == caption)
            return w;
    return nullptr;
}

QMdiSubWindow* MainWindow::add_child(QWidget* widget, const QString& title)
{
    QMdiSubWindow* sw = mdi_->addSubWindow(widget);
    sw->setAttribute(Qt::WA_DeleteOnClose);
    sw->setWindowTitle(title);
    // A child takes the size of the client area when it comes up.
    sw->resize(mdi_->viewport()->size());
    sw->show();
    return sw;
}

PictureView* MainWindow::picture_view(const PictureWindow& w) const
{
    const auto it = picture_children_.find(&w);
    return it == picture_children_.end() ? nullptr : qobject_cast<PictureView*>(it->second->widget());
}

void MainWindow::show_picture_window(const std::string& caption)
{
    PictureWindow* w = picture_by_caption(caption);
    if (w == nullptr)
        return;
    auto it = picture_children_.find(w);
    if (it == picture_children_.end()) {
        auto* view = new PictureView(*w, &port_.images());
        connect(view, &PictureView::scrolled, this, [this](int value) {
            if (long_run_)
                return;
            graphics_scroll_to(p_, port_, value);
            refresh();
        });
        connect(view->canvas(), &PictureCanvas::pointer_moved, this, [this, w, view](double x, double y) {
            if (w == &p_.pictures.section && w->pointer_labels_visible) {
                section_pointer_labels(p_, *w, x, y);
                view->refresh_pointer_labels();
            }
        });
        attach_pointer(w, view);
        if (w == &p_.pictures.xray) {
            // Stop and Continue set the timer's flag; the tick reads it.
            connect(view->add_button("Stop"), &QPushButton::clicked, this, [this] {
                xray_stop(p_);
                refresh();
            });
            connect(view->add_button("Continue"), &QPushButton::clicked, this, [this] {
                xray_continue(p_);
                refresh();
            });
        }
        QMdiSubWindow* sw = add_child(view, qs(w->caption));
        connect(sw, &QObject::destroyed, this, [this, w] {
            // A window the user closed no longer exists for the program.
            picture_children_.erase(w);
            w->exists = false;
            // Without the plan of active columns a report has no solution.
            if (w == &p_.pictures.plan_active)
                p_.report_kind = 0;
        });
        it = picture_children_.emplace(w, sw).first;
    }
    it->second->widget()->show();
    it->second->showNormal();
    mdi_->setActiveSubWindow(it->second);
    static_cast<PictureView*>(it->second->widget())->refresh();
    it->second->setWindowTitle(qs(w->caption));
}

void MainWindow::sync_windows()
{
    for (auto it = picture_children_.begin(); it != picture_children_.end();) {
        const PictureWindow* w = it->first;
        QMdiSubWindow* sw = it->second;
        if (!w->exists) {
            it = picture_children_.erase(it);
            sw->disconnect(this);
            sw->close();
            continue;
        }
        sw->setWindowTitle(qs(w->caption));
        static_cast<PictureView*>(sw->widget())->refresh();
        ++it;
    }
}

void MainWindow::repaint_pictures()
{
    for (const auto& [w, sw] : picture_children_)
        static_cast<PictureView*>(sw->widget())->canvas()->update();
    sync_search_info();
}

void MainWindow::show_text_window(const std::string& caption, const std::vector<std::string>& lines)
{
    texts_written_.insert(caption);
    QStringList text;
    for (const auto& l : lines)
        text << qs(l);
    auto it = text_children_.find(caption);
    if (it == text_children_.end()) {
        auto* edit = new QPlainTextEdit;
        edit->setReadOnly(true);
        edit->setLineWrapMode(QPlainTextEdit::NoWrap);
        edit->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
        QMdiSubWindow* sw = mdi_->addSubWindow(edit);
        sw->setAttribute(Qt::WA_DeleteOnClose);
        sw->setWindowTitle(qs(caption));
        sw->resize(620, 420);
        connect(sw, &QObject::destroyed, this, [this, caption] { text_children_.erase(caption); });
        it = text_children_.emplace(caption, sw).first;
    }
    static_cast<QPlainTextEdit*>(it->second->widget())->setPlainText(text.join('\n'));
    it->second->show();
    mdi_->setActiveSubWindow(it->second);
}

const PictureWindow* MainWindow::active_picture() const
{
    QMdiSubWindow* sw = mdi_->currentSubWindow();
    for (const auto& [w, child] : picture_children_)
        if (child == sw)
            return w;
    return nullptr;
}

QImage MainWindow::active_picture_image() const
{
    const PictureWindow* w = active_picture();
    if (w == nullptr)
        return {};
    return picture_view(*w)->render();
}

void MainWindow::report(Project& p, Port& port, int destination, const ReportContext& ctx)
{
    report_command(this, p, port, destination, ctx);
}

void MainWindow::print_view(Project&, Port&)
{
    if (const PictureWindow* w = active_picture())
        print_picture(this, w->picture, w->caption);
}

void MainWindow::copy_picture(Project&, Port&)
{
    const QImage image = active_picture_image();
    if (!image.isNull())
        QGuiApplication::clipboard()->setImage(image);
}

void MainWindow::show_help(Project&, Port& port)
{
    const QString path = manual_path();
    if (path.isEmpty()) {
        port.message_box("The manual (manual.html) was not found beside the program.", Buttons::ok,
                         Icon::warning, "TOBEL-3");
        return;
    }
    if (help_child_ == nullptr) {
        auto* browser = new QTextBrowser;
        browser->setOpenExternalLinks(true);
        browser->setSource(QUrl::fromLocalFile(path));
        help_child_ = mdi_->addSubWindow(browser);
        help_child_->setAttribute(Qt::WA_DeleteOnClose);
        help_child_->setWindowTitle("TOBEL-3 Help");
        help_child_->resize(760, 560);
        connect(help_child_, &QObject::destroyed, this, [this] { help_child_ = nullptr; });
    }
    help_child_->show();
    mdi_->setActiveSubWindow(help_child_);
}

void MainWindow::end_program(Project&)
{
    ending_ = true;
    QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
}

void MainWindow::closeEvent(QCloseEvent* e)
{
    if (ending_) {
        e->accept();
        return;
    }
    // A long run is stopped first; the window stays.
    if (long_run_) {
        press_stop();
        e->ignore();
        return;
    }
    choose("File_exit");
    if (ending_)
        e->accept();
    else
        e->ignore();
}

void MainWindow::showEvent(QShowEvent* e)
{
    QMainWindow::showEvent(e);
    if (!first_show_)
        return;
    first_show_ = false;
    // First Activate only: the title form, then the start form.
    if (options_.greet)
        QTimer::singleShot(0, this, [this] {
            show_title_form(this);
            const int button = show_start_form(this);
            if (button != 0)
                start_button(button);
        });
}

bool MainWindow::eventFilter(QObject* watched, QEvent* e)
{
    if (watched == info_child_ && info_child_ != nullptr) {
        if (e->type() == QEvent::Move && !placing_info_)
            info_moved_ = true;
        if (e->type() == QEvent::Close) {
            // Closing the paused panel is its Continue; otherwise it closes.
            if (pause_loop_ != nullptr) {
                search_info_button(2);
            } else {
                take_panel_place();
                p_.search.panel_open = 0;
            }
        }
    }
    if (e->type() == QEvent::MouseButtonPress) {
        for (int label = 2; label <= 4; ++label)
            if (watched == method_labels_[label - 1]) {
                choose("meth", label);
                return true;
            }
    }
    return QMainWindow::eventFilter(watched, e);
}

} // namespace tobel::gui
