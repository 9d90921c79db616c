// The one dialog that shows any form of the dialog session: a table of the
// form's cells, its option buttons and scroll bar, its buttons and menus,
// the picture it works on, and Continue and Cancel. Every click, key and
// button goes to the session; after each step the dialog repaints from the
// form (refresh), or ends when the form has closed or another has taken its
// place.
//
// The widgets carry object names for the tests: "cells" (the table),
// "table-scroll" (its vertical scroll bar, when the form has one),
// "picture", "scroll" with "scroll-label", "swatch", "option<n>" (n the
// choice), "button-<name>" (the session's name of the button),
// "menu-<name>", "continue", "cancel", "notes".
#pragma once

#include <QDialog>
#include <map>
#include <string>

#include "commands/dialog_session.h"
#include "forms/form_view.h"
#include "project/project.h"
#include "qt/image_store.h"
#include "ui/port.h"

class QTableWidget;
class QLabel;
class QGroupBox;
class QScrollBar;
class QPushButton;
class QRadioButton;
class QToolButton;
class QHBoxLayout;
class QGridLayout;
class QVBoxLayout;

namespace tobel::gui {

class FormPicture;

class FormDialog : public QDialog {
    Q_OBJECT
  public:
    FormDialog(QWidget* parent, Project& p, Port& port, DialogSession& s, const ImageStore* images);

    // Repaints every widget from the form in the session.
    void refresh();
    // Whether the form this dialog was opened on has ended (closed, or
    // replaced by the next form of a chain).
    bool form_ended() const { return ended_; }

    void reject() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void after_step();
    void press(const std::string& name, int arg);
    QPushButton* button_for(const FormButton& b);
    QRadioButton* option_for(const FormOption& o);
    QToolButton* menu_for(const FormMenu& m);

    Project& p_;
    Port& port_;
    DialogSession& s_;
    std::size_t kind_;
    bool ended_ = false;
    FormView view_;

    QLabel* notes_ = nullptr;
    QTableWidget* table_ = nullptr;
    FormPicture* picture_ = nullptr;
    QGroupBox* options_box_ = nullptr;
    QVBoxLayout* options_layout_ = nullptr;
    QScrollBar* scroll_ = nullptr;
    QLabel* scroll_label_ = nullptr;
    QScrollBar* table_scroll_ = nullptr;
    QLabel* swatch_ = nullptr;
    QPushButton* continue_ = nullptr;
    QPushButton* cancel_ = nullptr;
    // The form's own buttons and menus, in rows of buttons_per_row in the
    // order they first appear, so that a form of many commands (the section
    // editor) stays as wide as its picture and table.
    QGridLayout* buttons_layout_ = nullptr;
    int button_count_ = 0;
    void place_button(QWidget* w);
    std::map<std::string, QPushButton*> buttons_;
    std::map<int, QRadioButton*> options_;
    std::map<std::string, QToolButton*> menus_;
};

} // namespace tobel::gui
