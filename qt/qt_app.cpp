#include "qt/qt_app.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <cerrno>
#include <filesystem>
#include <mutex>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace tobel {

namespace {
// The application made here; it lives until the program ends.
QGuiApplication* made_app = nullptr;
} // namespace

void ensure_gui_application()
{
    static std::mutex guard;
    const std::lock_guard<std::mutex> lock(guard);
    if (QCoreApplication* app = QCoreApplication::instance()) {
        // A program that made a console-only application cannot get fonts.
        if (!qobject_cast<QGuiApplication*>(app))
            throw std::runtime_error("pictures need a QGuiApplication, but a QCoreApplication exists");
        return;
    }
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Without a session's runtime folder Qt warns on every run; a private
    // one under the temporary folder is what it would fall back to.
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) {
        const std::string dir =
            (std::filesystem::temp_directory_path() / ("runtime-" + std::to_string(::getuid()))).string();
        if (::mkdir(dir.c_str(), 0700) == 0 || errno == EEXIST)
            qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(dir));
    }
    // Qt keeps references to argc and argv for the application's lifetime,
    // and the application lives until the program ends.
    static int argc = 1;
    static char name[] = "tobel";
    static char* argv[] = {name, nullptr};
    made_app = new QGuiApplication(argc, argv);
}

} // namespace tobel
