// Argument texts to numbers and words.
#pragma once

// Reads `text` by a scanf format, with the rules of the bounds-checked scanf family. In use are
// literal characters, widths, %d %u %x with the lengths hh and h, and %s, whose target is followed
// by its size in bytes as an `unsigned`; a word that does not fit with its zero is not stored and
// ends the scan.
//
// Returns the number of fields converted and stored; -1 when the text ends before the first
// conversion could be tried. A target whose conversion fails keeps its value.
//
// A number is read with 64 bits, where it saturates, and the low bits of the target's width are
// stored. %x takes an optional 0x or 0X, which the width counts; "0x" without a digit after it
// is no number. Widths do not count leading blanks but do count a sign.
int ScanArgument(const char* text, const char* format, ...);

// atoi: leading blanks, a sign, decimal digits; stops at the first other character. 0 without
// digits; saturates at the limits of 32 bits.
int ParseInteger(const char* text);
