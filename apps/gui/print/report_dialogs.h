// The two windows of a previewed or printed report: "Report Graphics", the
// choice of the picture for page one, over the core's form; and "Print
// Preview", one page at a time with Print, Cancel and the page buttons.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <array>

#include "dialogs/report_graphics_form.h"
#include "graphics/report_pages.h"
#include "project/display_list.h"
#include "report/report.h"
#include "ui/port.h"

namespace tobel::gui {

class ReportGraphicsDialog : public QDialog {
    Q_OBJECT
  public:
    ReportGraphicsDialog(QWidget* parent, const Project& p, Port& port);
    // The choice taken by Continue; 0 after Cancel.
    int graphic() const { return form_.graphic; }
    QRadioButton* option(int choice) const { return options_[std::size_t(choice - 1)]; }
    QPushButton* continue_button() const { return continue_; }
    QPushButton* cancel_button() const { return cancel_; }

  private:
    void on_continue();
    const Project& project_;
    Port& port_;
    ReportGraphicsForm form_;
    std::array<QRadioButton*, 5> options_{};
    QPushButton* continue_ = nullptr;
    QPushButton* cancel_ = nullptr;
};

// Shows the page a display list holds, stretched over the widget, on white.
class PageView : public QWidget {
    Q_OBJECT
  public:
    explicit PageView(QWidget* parent = nullptr);
    void set_page(DisplayList list);
    const DisplayList& page() const { return page_; }
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    DisplayList page_;
};

class ReportPreviewDialog : public QDialog {
    Q_OBJECT
  public:
    ReportPreviewDialog(QWidget* parent, const Project& p, const ReportContext& ctx,
                        const DisplayList* graphic);
    int page() const { return state_.report_page; }
    bool has_next() const { return more_; }
    const PageView* view() const { return view_; }
    QPushButton* print_button() const { return print_; }
    QPushButton* cancel_button() const { return cancel_; }
    QPushButton* previous_button() const { return previous_; }
    QPushButton* next_button() const { return next_; }
    QLabel* page_label() const { return page_label_; }

  private:
    void draw_page();
    void on_print();
    const Project& project_;
    ReportContext context_;
    const DisplayList* graphic_;
    ReportPages state_;
    bool more_ = false;
    PageView* view_ = nullptr;
    QPushButton* print_ = nullptr;
    QPushButton* cancel_ = nullptr;
    QPushButton* previous_ = nullptr;
    QPushButton* next_ = nullptr;
    QLabel* page_label_ = nullptr;
};

// Every page of the report for a printer (page count and marks cleared,
// report_page 1, then draw_report page after page).
bool print_report_pages(QWidget* parent, const Project& p, const ReportContext& ctx,
                        const DisplayList* graphic);

} // namespace tobel::gui
