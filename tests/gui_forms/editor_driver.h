// What the editor's Qt tests share: the section editor of an example opened in
// a FormDialog whose picture is held at the views' own 800 by 600 device
// units, so that a widget pixel and a world point convert by hand, and the
// mouse gestures on that picture.
#pragma once

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>
#include <memory>

#include "commands/commands.h"
#include "commands/dialog_session.h"
#include "forms/form_dialog.h"
#include "forms/form_picture.h"
#include "recording_port.h"
#include "support/opened_example.h"

namespace tobel::test {

// The editor of section 1 of `name` in its dialog, shown, its picture 800 by
// 600 pixels.
struct EditorDialog {
    RecordingPort port;
    Project p;
    DialogSession s;
    std::unique_ptr<gui::FormDialog> d;
    gui::FormPicture* pic = nullptr;

    explicit EditorDialog(const char* name)
    {
        p = opened_example(port, name);
        open_dialog(p, port, s, DialogKind::sections);
        d = std::make_unique<gui::FormDialog>(nullptr, p, port, s, &port.images);
        pic = d->findChild<gui::FormPicture*>("picture");
        pic->setFixedSize(800, 600);
        d->resize(1400, 800);
        d->show();
        (void)QTest::qWaitForWindowExposed(d.get());
    }
    SectionEditor& editor() { return std::get<SectionEditor>(s.form); }
    QTableWidget* cells() const { return d->findChild<QTableWidget*>("cells"); }
    QPushButton* button(const char* name) const { return d->findChild<QPushButton*>(name); }
    QString notes() const { return d->findChild<QLabel*>("notes")->text(); }
    // The world window of the picture: left, top, right, bottom.
    gui::PictureWindowUnits window() const
    {
        return gui::picture_window(p.pictures.editor.picture).value_or(gui::PictureWindowUnits{});
    }
};

// A move of the pointer with buttons held and modifiers, as a drag sends it.
inline void move_to(QWidget* w, QPoint at, Qt::MouseButtons held, Qt::KeyboardModifiers mods = Qt::NoModifier)
{
    QMouseEvent move(QEvent::MouseMove, QPointF(at), w->mapToGlobal(QPointF(at)), Qt::NoButton, held, mods);
    QApplication::sendEvent(w, &move);
}

// Press at `from`, move to `to` with the button held, release there.
inline void drag(QWidget* w, QPoint from, QPoint to, Qt::KeyboardModifiers mods = Qt::NoModifier)
{
    QTest::mousePress(w, Qt::LeftButton, mods, from);
    move_to(w, to, Qt::LeftButton, mods);
    QTest::mouseRelease(w, Qt::LeftButton, mods, to);
}

} // namespace tobel::test
