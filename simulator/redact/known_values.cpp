#include "simulator/redact/known_values.h"

#include <cstdlib>
#include <cstring>

namespace {

constexpr uint32_t ShortestNumber = 5;  // fewer digits of a register are not looked for
constexpr uint32_t ShortestPart = 4;    // a shorter name counts only as a whole word

uint32_t HashStep(uint32_t hash, uint8_t byte) {
  return (hash ^ byte) * 16777619U;
}

// Differs from run to run, so that nobody can make a trace whose values all share one slot.
uint32_t HashStart(const KnownValues* known, ValueKind kind) {
  const auto seed = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(known->slots) >> 4);
  return seed * 2654435761U ^ static_cast<uint32_t>(kind);
}

uint32_t* FindSlot(const KnownValues* known, uint32_t hash, ValueKind kind, const uint8_t* value,
                   uint32_t length) {
  hash = (hash ^ hash >> 15) * 739958113U;
  for (hash ^= hash >> 13;; hash++) {
    uint32_t* slot = &known->slots[hash & known->slotMask];
    const KnownValue* found = &known->values[*slot];
    if (*slot == 0 || (found->kind == kind && found->length == length &&
                       memcmp(known->bytes + found->start, value, length) == 0)) {
      return slot;
    }
  }
}

// Finds a value, or adds it with `number`. Returns its index, or 0 if there is no room.
uint32_t Add(KnownValues* known, ValueKind kind, const uint8_t* value, uint32_t length,
             uint32_t number) {
  uint32_t hash = HashStart(known, kind);
  for (uint32_t i = 0; i < length; i++) hash = HashStep(hash, value[i]);
  uint32_t* slot = FindSlot(known, hash, kind, value, length);
  if (*slot != 0) return *slot;
  if (known->count == known->capacity || length > known->byteCapacity - known->usedBytes) {
    known->full = true;
    return 0;
  }
  memcpy(known->bytes + known->usedBytes, value, length);
  known->values[known->count] = {
      .kind = kind, .length = length, .start = known->usedBytes, .number = number, .places = 0};
  known->usedBytes += length;
  return *slot = known->count++;
}

bool IsLetterOrDigit(uint8_t byte) {
  return (byte >= '0' && byte <= '9') || ((byte | 32) >= 'a' && (byte | 32) <= 'z') || byte >= 0x80;
}

// Makes capital and small letters equal. Some bytes that are not ASCII become equal, too.
uint8_t Folded(uint8_t byte) {
  return byte >= '0' && byte <= '9' ? byte : static_cast<uint8_t>(byte | 32);
}

void AddForm(KnownValues* known, uint32_t index, const uint8_t* text, uint32_t size) {
  uint8_t form[MostNameBytes];
  uint32_t length = 0;
  for (uint32_t i = 0; i < size; i++) {
    if (IsLetterOrDigit(text[i])) form[length++] = Folded(text[i]);
  }
  if (length == 0) return;
  known->isFormLength[length] = true;
  if (known->longestForm < length) known->longestForm = length;
  Add(known, ValueKind::Form, form, length, index);
}

// Writes a value as a text spells it: a number in hex digits, a name as it is. Returns the length.
uint32_t SpellOut(ValueKind kind, const uint8_t* value, uint32_t length, uint8_t* text) {
  if (kind == ValueKind::Name) {
    memcpy(text, value, length);
    return length;
  }
  for (size_t i = 0; i < length; i++) {
    const uint8_t byte = value[kind == ValueKind::Register ? length - 1 - i : i];
    text[2 * i] = static_cast<uint8_t>("0123456789abcdef"[byte >> 4]);
    text[2 * i + 1] = static_cast<uint8_t>("0123456789abcdef"[byte & 15]);
  }
  return 2 * length;
}

// Removes the leading zeros of a register, or of each part of an address.
uint32_t DropZeros(ValueKind kind, uint8_t* digits, uint32_t count) {
  uint32_t size = 0;
  for (uint32_t i = 0; i < count; i++) {
    const bool leads = kind == ValueKind::Register ? size == 0 : i % 2 == 0;
    if (digits[i] != '0' || !leads) digits[size++] = digits[i];
  }
  return size;
}

// Turns UTF-8 into 16 bits a character, without zero bytes. Returns the length.
uint32_t Widen(const uint8_t* name, uint32_t length, uint8_t* wide) {
  uint32_t size = 0;
  for (uint32_t i = 0; i < length;) {
    uint32_t code = name[i++];
    uint32_t more = code < 0xC0 ? 0 : code < 0xE0 ? 1 : code < 0xF0 ? 2 : 3;
    if (more > 0) code &= 0x3FU >> more;
    for (; more > 0 && i < length; more--) code = code << 6 | (name[i++] & 0x3FU);
    if (code >= 0x10000) code = (code - 0x10000) >> 10 | (code & 0x3FF) << 16 | 0xDC00D800;
    for (; code != 0; code >>= 8) {
      if ((code & 0xFF) != 0) wide[size++] = static_cast<uint8_t>(code);
    }
  }
  return size;
}

}  // namespace

// A text without zeros and separators, in lower case. `places` are the places in the text.
struct TextShape {
  uint32_t length;
  uint8_t characters[MostTextBytes];
  uint32_t places[MostTextBytes];
  bool apart[MostTextBytes + 1];  // a word ended before this character
};

namespace {

void TakeShape(const uint8_t* text, uint32_t size, TextShape* shape) {
  bool apart = true;
  shape->length = 0;
  for (uint32_t i = 0; i < size; i++) {
    if (IsLetterOrDigit(text[i])) {
      shape->characters[shape->length] = Folded(text[i]);
      shape->places[shape->length] = i;
      shape->apart[shape->length++] = apart;
      apart = false;
    } else if (text[i] != 0) {
      apart = true;
    }
  }
  shape->apart[shape->length] = true;
}

// The index of the longest form that begins here; 0 if there is none.
uint32_t FindForm(const KnownValues* known, const TextShape* shape, uint32_t at) {
  uint32_t form = 0;
  uint32_t hash = HashStart(known, ValueKind::Form);
  for (uint32_t size = 1; size <= known->longestForm && size <= shape->length - at; size++) {
    hash = HashStep(hash, shape->characters[at + size - 1]);
    const bool isWord = shape->apart[at] && shape->apart[at + size];
    if (!known->isFormLength[size] || (size < ShortestPart && !isWord)) continue;
    const uint32_t found = *FindSlot(known, hash, ValueKind::Form, shape->characters + at, size);
    if (found != 0) form = found;
  }
  return form;
}

}  // namespace

bool StartKnownValues(KnownValues* known, uint32_t size) {
  *known = {};
  known->count = 1;
  // Registers make most values: each has eight hex digits in the trace, and two forms.
  known->capacity = 3 * (size / 8) + 16;
  known->byteCapacity = 3 * size + 16 * MostNameBytes;
  known->slotMask = 1;
  while (known->slotMask < 2 * known->capacity) known->slotMask = known->slotMask * 2 + 1;
  known->values = static_cast<KnownValue*>(calloc(known->capacity, sizeof(KnownValue)));
  known->bytes = static_cast<uint8_t*>(calloc(known->byteCapacity, 1));
  known->slots = static_cast<uint32_t*>(calloc(known->slotMask + size_t{1}, sizeof(uint32_t)));
  known->shape = static_cast<TextShape*>(calloc(1, sizeof(TextShape)));
  return known->values != nullptr && known->bytes != nullptr && known->slots != nullptr &&
         known->shape != nullptr;
}

void ReleaseKnownValues(KnownValues* known) {
  free(known->values);
  free(known->bytes);
  free(known->slots);
  free(known->shape);
  *known = {};
}

KnownValue* Remember(KnownValues* known, ValueKind kind, const uint8_t* value, uint32_t length) {
  const uint32_t count = known->count;
  uint32_t* number = &known->numbers[static_cast<uint32_t>(kind)];
  if (kind == ValueKind::Name) number += length - 1;
  const uint32_t index = Add(known, kind, value, length, *number);
  if (known->count > count && kind <= ValueKind::Name) {
    ++*number;
    uint8_t text[MostNameBytes] = {};
    uint32_t size = SpellOut(kind, value, length, text);
    AddForm(known, index, text, size);
    if (kind == ValueKind::Name) {
      size = Widen(value, length, text);
    } else {
      size = DropZeros(kind, text, size);
    }
    if (kind == ValueKind::Name || size >= ShortestNumber) AddForm(known, index, text, size);
  }
  return &known->values[index];
}

void WriteStandIn(const KnownValue* value, uint8_t* standIn) {
  uint32_t number = value->number;
  if (value->kind == ValueKind::Name) {
    for (uint32_t i = value->length; i > 0; i--, number /= 26) {
      standIn[i - 1] = static_cast<uint8_t>('a' + number % 26);
    }
    return;
  }
  memset(standIn, 0, value->length);
  number++;
  if (value->kind == ValueKind::Register) {
    number |= 0x5A000000;
    memcpy(standIn, &number, sizeof(number));
    return;
  }
  standIn[0] = 0x02;  // locally administered
  for (uint32_t i = 5; i > 2; i--, number >>= 8) standIn[i] = static_cast<uint8_t>(number);
}

void ReplaceKnown(KnownValues* known, uint8_t* text, uint32_t size) {
  TextShape* shape = known->shape;
  TakeShape(text, size, shape);
  for (uint32_t at = 0; at < shape->length; at++) {
    const uint32_t found = FindForm(known, shape, at);
    if (found == 0) continue;
    const KnownValue* form = &known->values[found];
    KnownValue* value = &known->values[form->number];
    uint8_t standIn[MostNameBytes];
    uint8_t spelt[MostNameBytes];
    WriteStandIn(value, standIn);
    const uint32_t length = SpellOut(value->kind, standIn, value->length, spelt);
    const uint32_t first = shape->places[at];
    if (shape->places[at + form->length - 1] - first == length - 1) {
      memcpy(text + first, spelt, length);  // the separators, too
    } else {
      for (uint32_t i = 0; i < form->length; i++) {
        text[shape->places[at + i]] = spelt[length - form->length + i];
      }
    }
    value->places++;
    at += form->length - 1;
  }
}
