// The main window of the desktop program: a multi-document frame captioned
// from the project, its menus built from the menu model and refreshed after
// every command, the method box, the child windows of the pictures and the
// text windows, and the Stop and Pause buttons of a long run.
#pragma once

#include <QEventLoop>
#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>
#include <QPushButton>
#include <QTimer>
#include <map>
#include <set>
#include <string>

#include "commands/dialog_session.h"
#include "commands/menu_command.h"
#include "project/project.h"
#include "qt_port.h"

class QMdiSubWindow;
class QMenu;

namespace tobel::gui {

class PictureView;
class SearchInfoWindow;
class SummaryWindow;

class MainWindow : public QMainWindow, public MenuHost {
    Q_OBJECT
  public:
    struct Options {
        bool greet = true;      // the title form and the start form on first showing
        bool show_forms = true; // the session's forms as modal Qt forms after a command
    };
    MainWindow(Project& p, Options options, QWidget* parent = nullptr);
    ~MainWindow() override;

    Project& project() { return p_; }
    QtPort& port() { return port_; }
    DialogSession& session() { return session_; }
    QMdiArea* mdi() { return mdi_; }

    // Runs the command of a menu item as choosing it does: the command, the
    // forms it opened, then the menus, the caption and the child windows.
    MenuResult choose(const std::string& control, int index = 0);
    // The action of a menu item (its submenu's action for a submenu).
    QAction* action(const std::string& item) const;
    // A long run is under way.
    bool running() const { return menu_ctx_.running; }
    // The buttons of a long run.
    void press_stop();
    void press_pause();

    // The start form's buttons: 1 "Create a New File", 2 "Open an Existing
    // File", 3 "Other".
    void start_button(int button);
    // The Continue of the form open in the session, as its Qt form presses
    // it, then the forms that follow and the refresh.
    void continue_form();
    // After the project changed outside a command (a form driven in code):
    // menus, caption, method box and child windows follow it.
    void refresh();
    void refresh_menus();
    void sync_windows();
    // Repaints the picture windows (from the yield of a long run).
    void repaint_pictures();

    // From the port.
    void show_text_window(const std::string& caption, const std::vector<std::string>& lines);
    void show_picture_window(const std::string& caption);
    // The child window of a picture window of the project, null when none is open.
    PictureView* picture_view(const PictureWindow& w) const;
    // The picture of the active child window (null when that is no picture).
    const PictureWindow* active_picture() const;
    // The active child's picture replayed on an image.
    QImage active_picture_image() const;
    // The search information window (tob_searchinfo) and the "Search
    // Summary" window; null until first shown.
    SearchInfoWindow* search_info() const { return info_; }
    QMdiSubWindow* search_info_child() const { return info_child_; }
    SummaryWindow* search_summary() const { return summary_; }
    // The search information window follows the search state: shown over
    // the search picture at panel_left, panel_top while panel_open is set,
    // its lines and buttons refreshed; hidden otherwise, its place kept as
    // fractions of the picture when the user moved it.
    void sync_search_info();
    // The paused search's panel, modal: "Continue" gives ok, "Exit" (or
    // Stop) cancel, as the search asks through its "Search paused" box.
    Answer paused_panel();
    bool paused() const { return pause_loop_ != nullptr; }
    // The buttons of the search information window, 1 to 4.
    void search_info_button(int command);
    // "Summary of Factors of Safety": the summary window, opened afresh.
    void show_search_summary();
    // The method box's labels, top first.
    QLabel* method_label(int i) const { return method_labels_[std::size_t(i - 1)]; }

    // MenuHost
    void report(Project&, Port&, int destination, const ReportContext& ctx) override;
    void print_view(Project&, Port&) override;
    void copy_picture(Project&, Port&) override;
    void show_help(Project&, Port&) override;
    void end_program(Project&) override;

  protected:
    void closeEvent(QCloseEvent* e) override;
    void showEvent(QShowEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;

  private:
    void build_menus();
    void fill_array_menu(const std::string& array, QMenu* menu);
    void fill_window_menu();
    void run_forms();
    void enable_solve_items();
    // The x-ray window's timer: a step every xray_timer_ms while it is on.
    void run_xray_timer();
    void xray_tick();
    void take_picture_size();
    void set_running(bool on, bool search);
    // The pointer on the pictures: the single column output on the plan of
    // active columns, the set-up handles and the click on the search picture.
    void attach_pointer(PictureWindow* w, PictureView* view);
    void search_picture_released(double x, double y);
    void take_panel_place();
    QRect search_picture_rect() const;
    QMdiSubWindow* add_child(QWidget* widget, const QString& title);
    PictureWindow* picture_by_caption(const std::string& caption);

    Project& p_;
    Options options_;
    QtPort port_;
    DialogSession session_;
    MenuContext menu_ctx_;
    QMdiArea* mdi_;
    QTimer* xray_timer_ = nullptr;
    std::map<std::string, QAction*> actions_;
    std::map<std::string, QMenu*> menus_;
    std::map<const PictureWindow*, QMdiSubWindow*> picture_children_;
    std::map<std::string, QMdiSubWindow*> text_children_;
    QMdiSubWindow* help_child_ = nullptr;
    QLabel* method_labels_[4] = {};
    QPushButton* stop_button_;
    QPushButton* pause_button_;
    bool long_run_ = false;
    bool first_show_ = true;
    // The text windows written by the command under way; those of an old
    // project close when Open or New has replaced it.
    std::set<std::string> texts_written_;
    bool ending_ = false;
    SearchInfoWindow* info_ = nullptr;
    QMdiSubWindow* info_child_ = nullptr;
    // The user moved the information window since it was placed.
    bool info_moved_ = false;
    bool placing_info_ = false;
    QEventLoop* pause_loop_ = nullptr;
    Answer pause_answer_ = Answer::ok;
    SummaryWindow* summary_ = nullptr;
    QMdiSubWindow* summary_child_ = nullptr;
};

} // namespace tobel::gui
