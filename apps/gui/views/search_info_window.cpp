#include "views/search_info_window.h"

#include <QFontDatabase>
#include <QVBoxLayout>

namespace tobel::gui {

SearchInfoWindow::SearchInfoWindow(const Project& p, QWidget* parent)
    : QWidget(parent), p_(p), lines_(new QLabel)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(8, 6, 8, 6);
    lines_->setObjectName("lines");
    lines_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    lines_->setTextFormat(Qt::PlainText);
    lines_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lines_->setMinimumHeight(120);
    column->addWidget(lines_, 1);
    const char* captions[] = {"Pause", "Continue", "Exit", "Summary of Factors of Safety"};
    for (int i = 0; i < 4; ++i) {
        auto* b = new QPushButton(captions[i]);
        b->setObjectName(QString("Command%1").arg(i + 1));
        column->addWidget(b);
        connect(b, &QPushButton::clicked, this, [this, i] { emit pressed(i + 1); });
        commands_[std::size_t(i)] = b;
    }
    refresh(false);
}

void SearchInfoWindow::refresh(bool paused)
{
    const SearchState& s = p_.search;
    QStringList lines;
    for (const auto& l : s.panel_lines)
        lines << QString::fromStdString(l);
    if (lines_->text() != lines.join('\n'))
        lines_->setText(lines.join('\n'));
    commands_[0]->setText(QString::fromStdString(s.panel_caption));
    commands_[0]->setVisible(!paused);
    commands_[1]->setVisible(paused);
    commands_[2]->setVisible(paused);
    commands_[3]->setVisible(!paused && s.running == 0 && s.summary_visible != 0);
}

} // namespace tobel::gui
