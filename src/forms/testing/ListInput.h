#pragma once
// A user's hands on a list control: clicks with modifiers and double clicks on
// a row's text, clicks on a column header in the details view.

#include "forms/ListView.h"

#include <Qt>

namespace fw::testing {

void ClickItem(ListView& list, const ListItem& item,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void DoubleClickItem(ListView& list, const ListItem& item);
/// Clicks the check box in front of a row's text.
void ClickCheckBox(ListView& list, const ListItem& item);
void ClickColumn(ListView& list, const ColumnHeader& column);

} // namespace fw::testing
