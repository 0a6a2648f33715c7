// The private values of a report with their stand-ins, found by value and in texts.
#pragma once

#include <cstdint>

enum class ValueKind : uint8_t {
  Address,
  Register,
  Name,  // of a network, or a word that the user named
  StayingText,
  Form,  // how one of the first three is looked for in texts
};

constexpr uint32_t MostNameBytes = 64;    // a passphrase in hex
constexpr uint32_t MostTextBytes = 8192;  // of one text

struct KnownValue {
  ValueKind kind;
  uint32_t length;
  uint32_t start;   // of its bytes
  uint32_t number;  // among those of its kind, for names of its length; of a form whose it is
  uint32_t places;  // where it was replaced, or stands
};

struct KnownValues {
  KnownValue* values;  // in the order of their first place; the first is spare
  uint32_t count;
  uint32_t capacity;
  bool full;  // there was no room for one
  uint8_t* bytes;
  uint32_t usedBytes;
  uint32_t byteCapacity;
  uint32_t* slots;  // hash table of the values; 0 is free
  uint32_t slotMask;
  uint32_t numbers[MostNameBytes + 2];   // of addresses, of registers, of names by their length
  bool isFormLength[MostNameBytes + 1];  // whether some form is of this length
  uint32_t longestForm;
  struct TextShape* shape;  // of the text at hand
};

// Takes memory for the values of traces of `size` bytes. Returns false if there is none.
bool StartKnownValues(KnownValues* known, uint32_t size);
void ReleaseKnownValues(KnownValues* known);

// Finds a value, or adds it.
KnownValue* Remember(KnownValues* known, ValueKind kind, const uint8_t* value, uint32_t length);

// Writes the stand-in, of the value's length.
void WriteStandIn(const KnownValue* value, uint8_t* standIn);

// Replaces the known values that are written out in a text of at most MostTextBytes, in whatever
// case, with or without separators and leading zeros, in 8 or 16 bits a character.
void ReplaceKnown(KnownValues* known, uint8_t* text, uint32_t size);
