// Typing into a cell of a form's table as a user does: a click on the cell,
// Backspace for each character it shows, then the new text.
#pragma once

#include <QTableWidget>
#include <QtTest>

namespace tobel::test {

inline void type_cell(QTableWidget* t, int row, int col, const QString& text)
{
    QTest::mouseClick(t->viewport(), Qt::LeftButton, {}, t->visualItemRect(t->item(row, col)).center());
    for (int i = int(t->item(row, col)->text().size()); i > 0; --i)
        QTest::keyClick(t, Qt::Key_Backspace);
    QTest::keyClicks(t, text);
}

} // namespace tobel::test
