#pragma once
// The key tables of the touch forms, in twips relative to the form: the
// keyboard's 60 keys of a German layout in five rows, with their design faces,
// function tags and face strings (plain, with SHIFT, with SYM), and the
// numeric pad's 15 keys.

#include <QString>
#include <array>
#include <vector>

namespace fw {

struct KeyDesign {
    int index;
    int left, top, width, height;
    QString caption; ///< design face; Wingdings keys hold the glyph codes
    QString tag;     ///< function name; empty for character keys
    bool wingdings;
    double points;
    QString faces; ///< "" for keys that never change their face
    // The label inside the key, in twips relative to the key.
    int labelLeft, labelTop, labelWidth;
};

/// The keyboard's table in reading order, row by row.
const std::vector<KeyDesign>& KeyboardTable();
/// The numeric pad's table in reading order: digits, comma, sign change,
/// BACKSPACE, CLEAR and the double-height OK key.
const std::vector<KeyDesign>& NumericPadTable();

/// Modifier state: 0 off, 1 one-shot, 2 locked.
struct ModifierStates {
    int shift = 0, ctrl = 0, alt = 0, sym = 0;
};

/// The face of a character key for the states: SHIFT the second character,
/// CTRL and ALT together (their state numbers And-ed) or SYM the third, else
/// the first; "" where the string has no such character.
QString hKeys(const QString& faces, const ModifierStates& states);

/// 0 gives 1, 1 gives 2, anything else 0.
int hNextState(int state);

/// A Wingdings glyph code as the symbol it draws, for fonts that exist here;
/// other characters unchanged.
QString WingdingsAsSymbols(const QString& caption);

} // namespace fw
