#include "qt_port.h"

#include <QApplication>
#include <QCoreApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QStatusBar>
#include <QStringList>

#include "main_window.h"

namespace tobel::gui {

namespace {

QString qs(const std::string& s)
{
    return QString::fromStdString(s);
}

QMessageBox::Icon qt_icon(Icon icon)
{
    switch (icon) {
    case Icon::information: return QMessageBox::Information;
    case Icon::warning: return QMessageBox::Warning;
    case Icon::critical: return QMessageBox::Critical;
    case Icon::question: return QMessageBox::Question;
    case Icon::none: break;
    }
    return QMessageBox::NoIcon;
}

// The events of the interface are served at most this often during a long
// run; the picture windows are repainted at most every repaint_ms.
constexpr qint64 events_ms = 15;
constexpr qint64 repaint_ms = 150;

} // namespace

QString qt_file_filter(const std::string& filter)
{
    const QStringList parts = qs(filter).split('|');
    QStringList out;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString desc = parts[i];
        const qsizetype open = desc.indexOf('(');
        if (open >= 0)
            desc = desc.left(open).trimmed();
        QStringList patterns;
        for (const QString& pattern : parts[i + 1].split(';', Qt::SkipEmptyParts)) {
            patterns << pattern.trimmed();
            // Windows names match in any case; here the lower case is added.
            if (pattern.trimmed().toLower() != pattern.trimmed())
                patterns << pattern.trimmed().toLower();
        }
        out << desc + " (" + patterns.join(' ') + ")";
    }
    if (out.isEmpty())
        out << qs(filter);
    return out.join(";;");
}

QtPort::QtPort(MainWindow& window, Project& p) : window_(window), p_(p), hooks_(*this)
{
    since_events_.start();
    since_repaint_.start();
}

Answer QtPort::message_box(const std::string& text, Buttons buttons, Icon icon, const std::string& title)
{
    const Box box{text, buttons, icon, title};
    boxes.push_back(box);
    // The paused search asks through its own window, the search information
    // window with "Continue" (ok) and "Exit" (cancel), whoever answers the
    // other boxes.
    if (text == "Search paused" && buttons == Buttons::ok_cancel && p_.search.running != 0) {
        if (busy_depth_ > 0)
            QApplication::setOverrideCursor(Qt::ArrowCursor);
        const Answer a = window_.paused_panel();
        if (busy_depth_ > 0)
            QApplication::restoreOverrideCursor();
        return a;
    }
    if (answer_box)
        return answer_box(box);
    QMessageBox m(qt_icon(icon), qs(title.empty() ? "TOBEL-3" : title), qs(text), QMessageBox::NoButton,
                  &window_);
    switch (buttons) {
    case Buttons::ok: m.setStandardButtons(QMessageBox::Ok); break;
    case Buttons::ok_cancel: m.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel); break;
    case Buttons::yes_no: m.setStandardButtons(QMessageBox::Yes | QMessageBox::No); break;
    case Buttons::yes_no_cancel:
        m.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        break;
    }
    // A box asked while the busy pointer shows gets the normal one.
    if (busy_depth_ > 0)
        QApplication::setOverrideCursor(Qt::ArrowCursor);
    const int r = m.exec();
    if (busy_depth_ > 0)
        QApplication::restoreOverrideCursor();
    switch (r) {
    case QMessageBox::Yes: return Answer::yes;
    case QMessageBox::No: return Answer::no;
    case QMessageBox::Cancel: return Answer::cancel;
    default: return buttons == Buttons::ok || buttons == Buttons::ok_cancel ? Answer::ok : Answer::cancel;
    }
}

std::optional<std::string> QtPort::input_box(const std::string& prompt, const std::string& title,
                                             const std::string& initial)
{
    if (answer_input)
        return answer_input(prompt);
    bool ok = false;
    const QString text = QInputDialog::getText(&window_, qs(title.empty() ? "TOBEL-3" : title), qs(prompt),
                                               QLineEdit::Normal, qs(initial), &ok);
    if (!ok)
        return std::nullopt;
    return text.toStdString();
}

std::optional<std::string> QtPort::open_file_dialog(const std::string& filter, const std::string& initial)
{
    if (answer_file)
        return answer_file(filter, false);
    const QString path = QFileDialog::getOpenFileName(&window_, "Open", qs(initial), qt_file_filter(filter));
    if (path.isEmpty())
        return std::nullopt;
    return path.toStdString();
}

std::optional<std::string> QtPort::save_file_dialog(const std::string& filter, const std::string& initial,
                                                    bool overwrite_prompt)
{
    if (answer_file)
        return answer_file(filter, true);
    const QString path = QFileDialog::getSaveFileName(
        &window_, "Save As", qs(initial), qt_file_filter(filter), nullptr,
        overwrite_prompt ? QFileDialog::Options() : QFileDialog::DontConfirmOverwrite);
    if (path.isEmpty())
        return std::nullopt;
    return path.toStdString();
}

void QtPort::progress(const std::string& line)
{
    window_.statusBar()->showMessage(qs(line));
}

// The solvers give way once per mesh row and the searches once per trial:
// the interface's events are served here, and the Stop button is read.
bool QtPort::yield()
{
    ++yields_;
    if (on_yield)
        on_yield(yields_);
    if (since_repaint_.elapsed() >= repaint_ms) {
        window_.repaint_pictures();
        since_repaint_.restart();
    }
    if (since_events_.elapsed() >= events_ms) {
        QCoreApplication::processEvents();
        since_events_.restart();
    }
    const bool stop = stop_;
    stop_ = false;
    return stop;
}

void QtPort::beep()
{
    QApplication::beep();
}

void QtPort::busy(bool on)
{
    if (on) {
        if (busy_depth_++ == 0)
            QApplication::setOverrideCursor(Qt::WaitCursor);
    } else if (busy_depth_ > 0) {
        if (--busy_depth_ == 0)
            QApplication::restoreOverrideCursor();
    }
}

void QtPort::show_text(const std::string& caption, const std::vector<std::string>& lines)
{
    window_.show_text_window(caption, lines);
}

void QtPort::show_view(int, const std::string& caption)
{
    window_.show_picture_window(caption);
}

} // namespace tobel::gui
