// The "Search Summary" window (tob_searchsummary): 8 rows by 5 cells of the
// recorded trials under their headings, the best trial's label in red, the
// scroll bar (only with more than 7 trials), Print, Save As and Close.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QWidget>
#include <array>

#include "project/project.h"
#include "search/summary.h"
#include "ui/port.h"

namespace tobel::gui {

class SummaryWindow : public QWidget {
    Q_OBJECT
  public:
    SummaryWindow(const Project& p, Port& port, QWidget* parent = nullptr);

    // summary_open: the display copy made afresh, the first trial on top.
    void open_table();
    // The rows from the display copy and the scroll position.
    void refresh();

    QLabel* row_label(int row) const { return labels_[std::size_t(row - 1)]; }
    QLineEdit* cell(int row, int column) const { return cells_[std::size_t(row - 1)][std::size_t(column)]; }
    QScrollBar* scroll() const { return scroll_; }
    // Command1 "Print", Command2 "Save As", Command3 "Close".
    QPushButton* command(int i) const { return commands_[std::size_t(i - 1)]; }
    const SummaryView& view() const { return view_; }

  signals:
    void closed();

  private:
    const Project& p_;
    Port& port_;
    SummaryView view_;
    std::array<QLabel*, summary_window_rows> labels_{};
    std::array<std::array<QLineEdit*, 5>, summary_window_rows> cells_{};
    QScrollBar* scroll_;
    std::array<QPushButton*, 3> commands_{};
    bool filling_ = false;
};

} // namespace tobel::gui
