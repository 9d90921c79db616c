// The search information window (tob_searchinfo): the lines of the last
// trial, "Pause" while a search runs; "Continue" and "Exit" when paused;
// after a search "Tentative Critical Surface" and "Summary of Factors of
// Safety". It stands over the search picture as its own child window; what
// it shows comes from the search state of the project.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>
#include <array>

#include "project/project.h"

namespace tobel::gui {

class SearchInfoWindow : public QWidget {
    Q_OBJECT
  public:
    explicit SearchInfoWindow(const Project& p, QWidget* parent = nullptr);

    // The caption, the lines and the buttons from the search state: while
    // `paused` only "Continue" and "Exit" (and the lines); while a search
    // runs only the first button; afterwards the first button and the
    // summary's when the search shows it.
    void refresh(bool paused);
    // Command1 "Pause" (or "Tentative Critical Surface"), Command2
    // "Continue", Command3 "Exit", Command4 "Summary of Factors of Safety".
    QPushButton* command(int i) const { return commands_[std::size_t(i - 1)]; }
    QString lines_text() const { return lines_->text(); }

  signals:
    void pressed(int command);

  private:
    const Project& p_;
    QLabel* lines_;
    std::array<QPushButton*, 4> commands_{};
};

} // namespace tobel::gui
