// The desktop program driven in code, offscreen: a whole session through its
// menus and the forms' logic (the session's steps, as the Qt forms forward
// them), the long runs with their Stop button, the clipboard and the
// screenshot option.
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QMdiSubWindow>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>
#include <fstream>
#include <sstream>

#include "commands/surface_commands.h"
#include "graphics/xray.h"
#include "main_window.h"
#include "project/numtext.h"
#include "session_files.h"
#include "views/picture_window.h"

using namespace tobel;
using namespace tobel::gui;

namespace {

using test::example;
using test::read_all;

// A window whose boxes and dialogs are answered in code.
struct Session {
    Project p;
    MainWindow w;
    std::vector<std::string> files; // answers of the file dialogs, in order
    Answer answer = Answer::no;

    Session() : w(p, MainWindow::Options{false, false})
    {
        w.port().answer_box = [this](const QtPort::Box& b) {
            return b.buttons == Buttons::ok ? Answer::ok : answer;
        };
        w.port().answer_file = [this](const std::string&, bool) -> std::optional<std::string> {
            if (files.empty())
                return std::nullopt;
            std::string f = files.front();
            files.erase(files.begin());
            return f;
        };
        w.resize(1000, 700);
        w.show();
    }
    void open(const std::string& path)
    {
        files.push_back(path);
        QCOMPARE(int(w.choose("File_open")), int(MenuResult::done));
    }
    // The stored single ellipsoid through the form's Continue.
    void ellipsoid()
    {
        QCOMPARE(int(w.choose("Edit_Sliding_surface_ellipsoid")), int(MenuResult::done));
        QCOMPARE(dialog_caption(w.session()), std::string("Ellipsoidal Sliding Surface"));
        w.continue_form();
    }
    int count_children(const QString& title) const
    {
        int n = 0;
        for (QMdiSubWindow* sw : const_cast<MainWindow&>(w).mdi()->subWindowList())
            n += sw->windowTitle() == title;
        return n;
    }
};

// Runs the dialog steps of a `tobel run` script line on the session, as the
// Qt forms forward a user's clicks and keys. False for a line it does not take.
bool dialog_line(Session& s, const std::string& line)
{
    std::istringstream in(line);
    std::string cmd;
    in >> cmd;
    Project& p = s.p;
    Port& port = s.w.port();
    DialogSession& d = s.w.session();
    auto rest = [&in] {
        std::string r;
        std::getline(in, r);
        const auto b = r.find_first_not_of(' ');
        return b == std::string::npos ? std::string() : r.substr(b);
    };
    if (cmd == "expect-dialog") {
        const std::string want = rest();
        if (dialog_caption(d) != want)
            qWarning() << "dialog" << dialog_caption(d).c_str() << "expected" << want.c_str();
        return dialog_caption(d) == want;
    }
    if (cmd == "cell") {
        int row = 0, col = 1;
        in >> row >> col;
        return dialog_select(p, port, d, row, col) == DialogStep::done;
    }
    if (cmd == "text") {
        bool ok = dialog_clear(p, port, d) == DialogStep::done;
        for (char c : rest())
            ok = ok && dialog_type(p, port, d, c) == DialogStep::done;
        return ok;
    }
    if (cmd == "choose") {
        int c = 0;
        in >> c;
        return dialog_choose(p, port, d, c) == DialogStep::done;
    }
    if (cmd == "button" || cmd == "goto-section" || cmd == "copy-section" || cmd == "goto-line") {
        std::string name = cmd;
        int arg = 0;
        if (cmd == "button")
            in >> name;
        in >> arg;
        return dialog_button(p, port, d, name, arg) == DialogStep::done;
    }
    if (cmd == "click" || cmd == "drag") {
        double y1 = 0, e1 = 0, y2 = 0, e2 = 0;
        in >> y1 >> e1;
        y2 = y1;
        e2 = e1;
        if (cmd == "drag")
            in >> y2 >> e2;
        bool ok = dialog_pointer(p, port, d, PointerAction::down, PointerButton::left, false, y1, e1) ==
                  DialogStep::done;
        if (cmd == "drag")
            dialog_pointer(p, port, d, PointerAction::move, PointerButton::left, false, y2, e2);
        dialog_pointer(p, port, d, PointerAction::up, PointerButton::left, false, y2, e2);
        return ok;
    }
    if (cmd == "continue") {
        s.w.continue_form();
        return true;
    }
    return false;
}

} // namespace

class SessionTest : public QObject {
    Q_OBJECT
  private slots:
    void new_wizard_builds_the_hand_written_example_and_solves_it();
    void open_shows_the_ground_isometry_and_the_menus_follow_the_model();
    void menu_actions_match_the_menu_model_after_every_step();
    void solve_single_trial_gives_the_listed_factor_and_its_windows();
    void stop_pressed_during_a_grid_search_ends_it_early_and_unlocks_the_menus();
    void a_click_on_a_method_label_swaps_it_with_the_top_one();
    void copy_to_clipboard_gives_the_active_picture();
    void the_xray_timer_draws_every_row_and_stop_and_continue_hold_and_resume_it();
    void the_scroll_bar_moves_the_longitudinal_section();
    void exit_asks_and_a_cancel_keeps_the_window();
    void the_file_filter_adds_the_lower_case_pattern();
    void screenshot_writes_a_png_of_the_window_size();
    void screenshot_of_a_missing_file_fails_with_a_message();
    void screenshots_of_the_paused_search_and_the_report_preview_exit_cleanly();
};

// The wizard of examples/scripts/new-project.txt, each dialog step handed to
// the session as the forms hand theirs; the saved file is the hand-written
// examples/slope3d-new-project.tob byte for byte.
void SessionTest::new_wizard_builds_the_hand_written_example_and_solves_it()
{
    Session s;
    QTemporaryDir dir;
    const std::string saved = (dir.path() + "/new-project.tob").toStdString();
    std::ifstream script(example("scripts/new-project.txt"));
    QVERIFY(script.good());
    std::string line;
    while (std::getline(script, line)) {
        std::istringstream in(line);
        std::string cmd;
        if (!(in >> cmd) || cmd[0] == '#')
            continue;
        if (cmd == "new") {
            QCOMPARE(int(s.w.choose("file_new")), int(MenuResult::done));
            QCOMPARE(s.w.windowTitle(), QString("TOBEL_3          File "));
        } else if (cmd == "ellipsoid") {
            // The form's five fields typed, then Continue.
            QCOMPARE(int(s.w.choose("Edit_Sliding_surface_ellipsoid")), int(MenuResult::done));
            auto& form = std::get<EllipsoidForm>(s.w.session().form);
            for (float& v : form.values)
                in >> v;
            s.w.continue_form();
        } else if (cmd == "save-as") {
            s.files.push_back(saved);
            QCOMPARE(int(s.w.choose("File_save_as")), int(MenuResult::done));
        } else if (cmd == "solve") {
            QCOMPARE(int(s.w.choose("Solve_single_trial")), int(MenuResult::done));
        } else if (cmd == "print") {
            continue;
        } else {
            QVERIFY2(dialog_line(s, line), line.c_str());
        }
    }
    QVERIFY(!dialog_open(s.w.session()));
    QCOMPARE(read_all(saved), read_all(example("slope3d-new-project.tob")));
    // The caption names the saved file (the isometry of the surface adds its words).
    QVERIFY(s.w.windowTitle().startsWith(QString::fromStdString("TOBEL_3          File " + saved)));
    // examples/README.md: Bishop 2.69 for this slope and ellipsoid.
    QCOMPARE(format(s.p.factor_of_safety, "####0.00"), std::string("2.69"));
}

void SessionTest::open_shows_the_ground_isometry_and_the_menus_follow_the_model()
{
    Session s;
    QVERIFY(!s.w.action("Edit_control_parameters")->isVisible());
    QVERIFY(!s.w.action("Solve")->isVisible());
    s.open(example("slope3d-layers-piezo-force.tob"));
    // The isometry of the finished load adds its own words to the caption.
    QCOMPARE(s.w.windowTitle(), QString::fromStdString(s.p.main_caption));
    QVERIFY(s.w.windowTitle().startsWith(
        QString::fromStdString("TOBEL_3          File " + example("slope3d-layers-piezo-force.tob"))));
    QVERIFY(s.w.action("Edit_control_parameters")->isVisible());
    QVERIFY(s.w.action("Graphics_Lateral_Section")->isVisible());
    QVERIFY(!s.w.action("Solve")->isVisible());
    // A finished load in 3-D shows the isometry of the ground (surface 2 of
    // two layers) in its own child window.
    PictureView* iso = s.w.picture_view(s.p.pictures.isometry);
    QVERIFY(iso != nullptr);
    QVERIFY(!s.p.pictures.isometry.picture.empty());
    QCOMPARE(s.p.view.iso_layer, int16(2));
    // The recent files list took the file: item 0 is captioned " 1 " + path.
    QAction* recent = s.w.action("FileName(0)");
    QVERIFY(recent != nullptr);
    QCOMPARE(recent->text(), QString::fromStdString(" 1 " + example("slope3d-layers-piezo-force.tob")));
    QVERIFY(recent->isVisible());
    QVERIFY(!s.w.action("FileName(1)")->isVisible());
}

void SessionTest::menu_actions_match_the_menu_model_after_every_step()
{
    Session s;
    auto check = [&s](const char* step) {
        int compared = 0;
        for (const auto& [control, item] : s.p.menus.items) {
            QAction* a = s.w.action(control);
            if (a == nullptr)
                continue;
            ++compared;
            // Qt takes a hidden action for a disabled one: enabled is compared where it shows.
            if (a->isVisible() != item.visible || (item.visible && a->isEnabled() != item.enabled) ||
                (a->isCheckable() && a->isChecked() != item.checked) ||
                a->text() != QString::fromStdString(item.caption))
                QFAIL(qPrintable(
                    QString("%1: %2 differs from the model (visible %3/%4, enabled %5/%6, '%7'/'%8')")
                        .arg(step, control.c_str())
                        .arg(a->isVisible())
                        .arg(item.visible)
                        .arg(a->isEnabled())
                        .arg(item.enabled)
                        .arg(a->text(), QString::fromStdString(item.caption))));
        }
        // Every item of the model but none has an action.
        QVERIFY(compared >= 70);
    };
    check("load");
    s.open(example("slope2d-homogeneous.tob"));
    check("open");
    s.ellipsoid();
    check("ellipsoid");
    QVERIFY(s.w.action("Solve_single_trial")->isVisible());
    QVERIFY(!s.w.action("Rotation_angle")->isVisible()); // one row
    s.w.choose("grid");
    QVERIFY(s.w.action("grid")->isChecked());
    s.w.choose("Graphics");
    check("graphics opened");
    QCOMPARE(s.w.action("Graphics_Isometry_Layer(0)")->text(), QString("Ground Surface"));
    QCOMPARE(s.w.action("Graphics_Isometry_Layer(1)")->text(), QString("Sliding Surface"));
}

void SessionTest::solve_single_trial_gives_the_listed_factor_and_its_windows()
{
    Session s;
    s.open(example("slope2d-homogeneous.tob"));
    s.ellipsoid();
    QCOMPARE(int(s.w.choose("Solve_single_trial")), int(MenuResult::done));
    // examples/README.md lists 1.27 for Bishop on this slope.
    QCOMPARE(format(s.p.factor_of_safety, "####0.00"), std::string("1.27"));
    QVERIFY(!s.w.running());
    QVERIFY(s.w.picture_view(s.p.pictures.plan_active) != nullptr);
    QVERIFY(!s.p.pictures.plan_active.picture.empty());
    QCOMPARE(s.count_children("RESULTS"), 1);
    QVERIFY(s.w.action("File_open")->isEnabled());
    // A second solve writes the same text window again, not a second one.
    s.w.choose("Solve_single_trial");
    QCOMPARE(s.count_children("RESULTS"), 1);
}

void SessionTest::stop_pressed_during_a_grid_search_ends_it_early_and_unlocks_the_menus()
{
    Session s;
    s.open(example("slope2d-homogeneous.tob"));
    // The grid search stored in the file, confirmed as its form's Continue
    // would; the Solve menu then offers the grid search.
    QVERIFY(confirm_search_setup(s.p, s.w.port(), true, false));
    s.w.refresh();
    QVERIFY(s.w.action("gridsearchsolv")->isVisible());
    int recorded_at_stop = -1;
    bool locked = false, refused = false, stop_shown = false;
    s.w.port().on_yield = [&](long) {
        if (recorded_at_stop >= 0 || s.p.search.summary_count < 5)
            return;
        recorded_at_stop = s.p.search.summary_count;
        locked =
            !s.w.action("File_open")->isEnabled() && !s.w.action("Edit_material_properties")->isEnabled();
        refused = s.w.choose("Graphics_plan") == MenuResult::busy;
        stop_shown = s.w.findChild<QPushButton*>("stop")->isVisible() &&
                     s.w.findChild<QPushButton*>("pause")->isVisible();
        s.w.press_stop();
    };
    QCOMPARE(int(s.w.choose("gridsearchsolv")), int(MenuResult::done));
    QVERIFY(recorded_at_stop >= 5);
    QVERIFY(locked);
    QVERIFY(refused);
    QVERIFY(stop_shown);
    // 17 by 17 centres each record at least one trial: the stopped search
    // recorded far fewer, at most the trials of the centre under way.
    QVERIFY(s.p.search.summary_count < 17 * 17);
    QVERIFY(s.p.search.summary_count <= recorded_at_stop + 2);
    QCOMPARE(s.p.search.stop_reason, std::string("stopped by the user"));
    QVERIFY(!s.w.running());
    QVERIFY(s.w.action("File_open")->isEnabled());
    QVERIFY(s.w.action("Edit_material_properties")->isEnabled());
    // Step 9: the Solve menu is hidden at the end of a search.
    QVERIFY(!s.w.action("Solve")->isVisible());
    QVERIFY(s.w.picture_view(s.p.pictures.search) != nullptr);
}

void SessionTest::a_click_on_a_method_label_swaps_it_with_the_top_one()
{
    Session s;
    QCOMPARE(s.w.method_label(1)->text(), QString("BISHOP'S SIMPLIFIED METHOD"));
    // Label 3 holds Spencer's method at the start.
    QTest::mouseClick(s.w.method_label(3), Qt::LeftButton);
    QCOMPARE(s.p.solution_method, int16(3));
    QCOMPARE(s.w.method_label(1)->text(), QString("SPENCER'S METHOD        "));
    QCOMPARE(s.w.method_label(3)->text(), QString("BISHOP'S SIMPLIFIED METHOD"));
    // The top label takes no click.
    QTest::mouseClick(s.w.method_label(1), Qt::LeftButton);
    QCOMPARE(s.p.solution_method, int16(3));
}

void SessionTest::copy_to_clipboard_gives_the_active_picture()
{
    Session s;
    s.open(example("slope2d-homogeneous.tob"));
    QCOMPARE(int(s.w.choose("Graphics_plan")), int(MenuResult::done));
    QGuiApplication::clipboard()->clear();
    QCOMPARE(int(s.w.choose("copygraphic")), int(MenuResult::done));
    const QImage image = QGuiApplication::clipboard()->image();
    QVERIFY(!image.isNull());
    PictureView* view = s.w.picture_view(s.p.pictures.section);
    QVERIFY(view != nullptr);
    QCOMPARE(image.size(), view->canvas()->size());
    // The plan's mesh lines are black on white: some pixels are dark.
    int dark = 0;
    for (int y = 0; y < image.height(); y += 2)
        for (int x = 0; x < image.width(); x += 2)
            dark += qGray(image.pixel(x, y)) < 64;
    QVERIFY(dark > 20);
}

// The x-ray window animates on a 100 ms timer, one mesh row a tick, from the
// last row to the first; Stop holds it and Continue resumes it. When it has
// ended, the window holds what the whole animation draws without a timer.
void SessionTest::the_xray_timer_draws_every_row_and_stop_and_continue_hold_and_resume_it()
{
    Session whole;
    whole.open(example("slope3d-layers-piezo-force.tob"));
    QCOMPARE(int(whole.w.choose("xxray")), int(MenuResult::done));
    finish_xray(whole.p);
    const std::size_t all_items = whole.p.pictures.xray.picture.items.size();

    Session s;
    s.open(example("slope3d-layers-piezo-force.tob"));
    QVERIFY(s.p.num_rows > 2);
    QCOMPARE(int(s.w.choose("xxray")), int(MenuResult::done));
    const XrayState& x = s.p.pictures.xray_state;
    QVERIFY(x.timer_on);
    PictureView* view = s.w.picture_view(s.p.pictures.xray);
    QVERIFY(view != nullptr);
    auto* stop = view->findChild<QPushButton*>("Stop");
    auto* go = view->findChild<QPushButton*>("Continue");
    QVERIFY(stop && go);
    QVERIFY(stop->isVisibleTo(view));
    QVERIFY(!go->isVisibleTo(view));
    // A tick or two, then Stop: the row stays where it is.
    QTRY_VERIFY_WITH_TIMEOUT(x.xray_row < s.p.num_rows, 5000);
    QTest::mouseClick(stop, Qt::LeftButton);
    QVERIFY(!x.timer_on);
    QVERIFY(go->isVisibleTo(view));
    const int held = x.xray_row;
    QTest::qWait(350);
    QCOMPARE(int(x.xray_row), held);
    QVERIFY(s.p.pictures.xray.picture.items.size() < all_items);
    // Continue: the rest of the rows, then the timer stops with both buttons gone.
    QTest::mouseClick(go, Qt::LeftButton);
    QVERIFY(x.timer_on);
    QTRY_VERIFY_WITH_TIMEOUT(!x.timer_on, 60000);
    QVERIFY(!stop->isVisibleTo(view) && !go->isVisibleTo(view));
    QCOMPARE(s.p.pictures.xray.picture.items.size(), all_items);
}

void SessionTest::the_scroll_bar_moves_the_longitudinal_section()
{
    Session s;
    s.open(example("slope3d-layers-piezo-force.tob"));
    s.w.choose("Graphics_Longitudinal_Section");
    PictureView* view = s.w.picture_view(s.p.pictures.section);
    QVERIFY(view != nullptr);
    auto* bar = view->findChild<QScrollBar*>("scroll");
    QVERIFY(bar != nullptr && bar->isVisible());
    // 41 rows: the bar runs 1 to 41.
    QCOMPARE(bar->minimum(), 1);
    QCOMPARE(bar->maximum(), 41);
    bar->setValue(11);
    QCOMPARE(s.p.view_row, int16(11));
    // Row 11 lies at X = x_min + 10 * row_spacing = 0 + 10 * 2.5 = 25.
    auto* label = view->findChild<QLabel*>("scroll_label");
    QVERIFY(label != nullptr);
    QVERIFY(label->text().contains("25.00"));
}

void SessionTest::exit_asks_and_a_cancel_keeps_the_window()
{
    Session s;
    s.answer = Answer::cancel;
    QVERIFY(!s.w.close());
    QVERIFY(s.w.isVisible());
    QCOMPARE(s.w.port().boxes.back().text, std::string("Do you wish to exit TOBEL?"));
    s.answer = Answer::ok;
    QVERIFY(s.w.close());
}

void SessionTest::the_file_filter_adds_the_lower_case_pattern()
{
    QCOMPARE(qt_file_filter("TOBEL-3 Files (*.TOB)|*.TOB"), QString("TOBEL-3 Files (*.TOB *.tob)"));
    QCOMPARE(qt_file_filter("Text Files (*.txt)|*.txt"), QString("Text Files (*.txt)"));
}

void SessionTest::screenshot_writes_a_png_of_the_window_size()
{
    QTemporaryDir dir;
    const QString out = dir.path() + "/shot.png";
    QProcess run;
    run.start(TOBEL_GUI_EXE, {"--screenshot", out, "--view", "isometry",
                              QString::fromStdString(example("slope3d-layers-piezo-force.tob"))});
    QVERIFY(run.waitForFinished(120000));
    QCOMPARE(run.exitCode(), 0);
    const QImage image(out);
    QVERIFY(!image.isNull());
    // The window is grabbed at the size the screenshot gives it.
    QCOMPARE(image.size(), QSize(1280, 860));
}

void SessionTest::screenshot_of_a_missing_file_fails_with_a_message()
{
    QTemporaryDir dir;
    QProcess run;
    run.start(TOBEL_GUI_EXE,
              {"--screenshot", dir.path() + "/shot.png", "--view", "plan", dir.path() + "/none.tob"});
    QVERIFY(run.waitForFinished(120000));
    QCOMPARE(run.exitCode(), 1);
    QVERIFY(QString(run.readAllStandardError()).contains("none.tob"));
    QVERIFY(!QFile::exists(dir.path() + "/shot.png"));
}

// The two views that run a command before the picture is taken: the grid
// search paused part way (the search is then ended through the panel's
// Exit) and the report preview; each ends with status 0, which under the
// leak checker also means nothing was left behind.
void SessionTest::screenshots_of_the_paused_search_and_the_report_preview_exit_cleanly()
{
    QTemporaryDir dir;
    for (const char* view : {"search-progress", "report-preview"}) {
        const QString out = dir.path() + "/" + view + ".png";
        QProcess run;
        run.start(TOBEL_GUI_EXE, {"--screenshot", out, "--view", view,
                                  QString::fromStdString(example("slope3d-layers-piezo-force.tob"))});
        QVERIFY(run.waitForFinished(120000));
        QVERIFY2(run.exitCode() == 0, run.readAllStandardError().constData());
        const QImage image(out);
        QVERIFY2(!image.isNull(), view);
    }
    // The search shot is taken taller, so that the centres show above the crest.
    QCOMPARE(QImage(dir.path() + "/search-progress.png").size(), QSize(1100, 1100));
}

QTEST_MAIN(SessionTest)
#include "session_test.moc"
