// The private values of a report and their stand-ins. Values are found by their bytes, and by how
// texts spell them.
#pragma once

#include <cstdint>

enum class ValueKind : uint8_t {
  Address,
  Register,
  Name,  // of a network, or a word that the user named
  StayingText,
  Form,  // a spelling of one of the first three, to look for in texts
};

constexpr uint32_t MostNameBytes = 64;    // a passphrase in hex
constexpr uint32_t MostTextBytes = 8192;  // of one text

struct KnownValue {
  ValueKind kind;
  uint32_t length;
  uint32_t start;   // of its bytes, in KnownValues::bytes
  uint32_t number;  // counts its kind, names by their length; for a form the index of its value
  uint32_t places;  // how often it was replaced, or stands
};

struct KnownValues {
  KnownValue* values;  // in the order of their first place; the first is spare
  uint32_t count;
  uint32_t capacity;
  bool full;  // there was no room for a value
  uint8_t* bytes;
  uint32_t usedBytes;
  uint32_t byteCapacity;
  uint32_t* slots;  // hash table of the values; 0 is free
  uint32_t slotMask;
  uint32_t numbers[MostNameBytes + 2];   // of the next address, register, name of each length
  bool isFormLength[MostNameBytes + 1];  // some form has this length
  uint32_t longestForm;
  struct TextShape* shape;  // of the text that is searched
};

// Takes memory for the values of traces of `size` bytes. Returns false if there is none.
bool StartKnownValues(KnownValues* known, uint32_t size);
void ReleaseKnownValues(KnownValues* known);

// Finds a value, or adds it.
KnownValue* Remember(KnownValues* known, ValueKind kind, const uint8_t* value, uint32_t length);

// Writes the stand-in, which is as long as the value.
void WriteStandIn(const KnownValue* value, uint8_t* standIn);

// Replaces the known values that a text of at most MostTextBytes spells out: in capital or small
// letters, with or without separators and leading zeros, in 8 or 16 bits a character.
void ReplaceKnown(KnownValues* known, uint8_t* text, uint32_t size);
