#include "forms/testing/ListInput.h"

#include <QStyle>
#include <QTest>
#include <QWidget>

namespace fw::testing {

namespace {
// Right of the picture and any check box, on the text.
QPoint textOf(ListView& list, const ListItem& item)
{
    const QRect rect = list.ItemRect(item);
    if (list.View() == lvwIcon)
        return QPoint(rect.center().x(), rect.bottom() - 6);
    return QPoint(rect.left() + std::min(rect.width() - 4, 48), rect.center().y());
}
} // namespace

void ClickItem(ListView& list, const ListItem& item, Qt::KeyboardModifiers modifiers)
{
    QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, textOf(list, item));
}

// As a mouse does it: the first click of the two arrives as a click.
void DoubleClickItem(ListView& list, const ListItem& item)
{
    ClickItem(list, item);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, textOf(list, item));
}

void ClickCheckBox(ListView& list, const ListItem& item)
{
    const QRect rect = list.ItemRect(item);
    const int box = list.viewport()->style()->pixelMetric(QStyle::PM_IndicatorWidth);
    const int margin = list.viewport()->style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1;
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(rect.left() + margin + box / 2, rect.center().y()));
}

void ClickColumn(ListView& list, const ColumnHeader& column)
{
    QTest::mouseClick(list.headerWidget(), Qt::LeftButton, Qt::NoModifier,
                      list.HeaderRect(column).center());
}

} // namespace fw::testing
