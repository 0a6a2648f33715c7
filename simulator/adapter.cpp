#include "simulator/adapter.h"

#include <cstring>

#include "channel/oid.h"

namespace {

constexpr CallResult Success = {Outcome::Succeeds, 0};

bool PatchMatches(const Scenario* scenario, const ScenarioPatch* patch, const uint8_t* payload,
                  uint32_t length) {
  if (patch->offset > length || patch->count > length - patch->offset) return false;
  const uint8_t* found = payload + patch->offset;
  const uint8_t* wanted = scenario->bytes + patch->firstByte;
  if (!patch->fill) return patch->count == 0 || memcmp(found, wanted, patch->count) == 0;
  for (uint32_t i = 0; i < patch->count; i++) {
    if (found[i] != *wanted) return false;
  }
  return true;
}

void WritePatch(const Scenario* scenario, const ScenarioPatch* patch, uint8_t* payload,
                uint32_t length) {
  if (patch->offset >= length) return;
  const uint32_t room = length - patch->offset;
  const uint32_t count = patch->count < room ? patch->count : room;
  if (count == 0) return;
  const uint8_t* source = scenario->bytes + patch->firstByte;
  if (patch->fill) {
    memset(payload + patch->offset, *source, count);
  } else {
    memcpy(payload + patch->offset, source, count);
  }
}

bool RuleMatches(const Scenario* scenario, const ScenarioRule* rule, const uint8_t* payload,
                 uint32_t length) {
  if (rule->hasLength && rule->length != length) return false;
  const ScenarioPatch* conditions = scenario->patches + rule->firstPatch;
  for (uint32_t i = 0; i < rule->conditionCount; i++) {
    if (!PatchMatches(scenario, &conditions[i], payload, length)) return false;
  }
  return true;
}

RequestResult ApplyRule(const Scenario* scenario, const ScenarioRule* rule, uint8_t* payload,
                        uint32_t length) {
  const ScenarioPatch* writes = scenario->patches + rule->firstPatch + rule->conditionCount;
  for (uint32_t i = 0; i < rule->writeCount; i++) {
    WritePatch(scenario, &writes[i], payload, length);
  }
  return {rule->result, rule->hasReturned ? rule->returned : length, false};
}

uint32_t ReadRegister(const Adapter* adapter, uint32_t address) {
  for (uint32_t i = 0; i < adapter->writtenCount; i++) {
    if (adapter->written[i].address == address) return adapter->written[i].value;
  }
  const RegisterValue* const first = adapter->scenario->registers;
  const RegisterValue* entry = first + adapter->scenario->registerCount;
  while (entry != first) {
    entry--;
    if (entry->address == address) return entry->value;
  }
  return 0;
}

CallResult WriteRegister(Adapter* adapter, RegisterValue entry) {
  for (uint32_t i = 0; i < adapter->writtenCount; i++) {
    if (adapter->written[i].address == entry.address) {
      adapter->written[i].value = entry.value;
      return Success;
    }
  }
  if (adapter->writtenCount == MaxWrittenRegisters) return {Outcome::Fails, ErrorNotEnoughMemory};
  adapter->written[adapter->writtenCount++] = entry;
  return Success;
}

bool IsRegisterOid(uint32_t oid) {
  return oid == OidReadRegister || oid == OidWriteRegister;
}

bool IsRegisterAccess(const Adapter* adapter, uint32_t oid, uint32_t length) {
  return IsRegisterOid(oid) && adapter->scenario->registerCount > 0 &&
         length == sizeof(RegisterValue);
}

CallResult AccessRegister(Adapter* adapter, uint32_t oid, uint8_t* payload) {
  RegisterValue entry = {};
  memcpy(&entry, payload, sizeof(entry));
  if (oid == OidWriteRegister) return WriteRegister(adapter, entry);
  entry.value = ReadRegister(adapter, entry.address);
  memcpy(payload, &entry, sizeof(entry));
  return Success;
}

// How many of a condition's bytes fit, up to the first one that does not.
uint32_t FittingBytes(const Scenario* scenario, const ScenarioPatch* patch, const uint8_t* payload,
                      uint32_t length) {
  uint32_t count = 0;
  for (; count < patch->count; count++) {
    const uint32_t source = patch->firstByte + (patch->fill ? 0 : count);
    if (patch->offset >= length || count >= length - patch->offset) break;
    if (payload[patch->offset + count] != scenario->bytes[source]) break;
  }
  return count;
}

// What keeps a rule from serving a request with its OID; `fitting` is how many of its conditions'
// bytes fit before the first one that does not.
NearestRule FindMisfit(const Scenario* scenario, const ScenarioRule* rule, const uint8_t* payload,
                       uint32_t length, uint64_t* fitting) {
  *fitting = 0;
  if (rule->hasLength && rule->length != length) {
    return {Misfit::Length, rule->line, rule->length, 0};
  }
  for (uint32_t i = 0; i < rule->conditionCount; i++) {
    const ScenarioPatch* patch = &scenario->patches[rule->firstPatch + i];
    const uint32_t count = FittingBytes(scenario, patch, payload, length);
    *fitting += count;
    if (PatchMatches(scenario, patch, payload, length)) continue;
    const uint32_t offset = patch->offset + count;
    if (offset >= length) return {Misfit::End, rule->line, offset, 0};
    const uint32_t source = patch->firstByte + (patch->fill ? 0 : count);
    return {Misfit::Byte, rule->line, offset, scenario->bytes[source]};
  }
  return {Misfit::UsedUp, rule->line, 0, 0};
}

}  // namespace

void AdapterStart(Adapter* adapter, const Scenario* scenario, uint32_t* served) {
  adapter->scenario = scenario;
  adapter->served = served;
  adapter->writtenCount = 0;
  adapter->registersHaveRules = false;
  for (uint32_t i = 0; i < scenario->ruleCount; i++) {
    served[i] = 0;
    if (IsRegisterOid(scenario->rules[i].oid)) adapter->registersHaveRules = true;
  }
}

CallResult AdapterOpen(const Adapter* adapter) {
  return adapter->scenario->open;
}

CallResult AdapterClose(const Adapter* adapter) {
  return adapter->scenario->close;
}

RequestResult AdapterRequest(Adapter* adapter, uint32_t oid, uint8_t* payload, uint32_t length) {
  const Scenario* scenario = adapter->scenario;
  const bool hasRules = adapter->registersHaveRules || !IsRegisterOid(oid);
  const ScenarioRule* const end = scenario->rules + (hasRules ? scenario->ruleCount : 0);
  for (const ScenarioRule* rule = scenario->rules; rule != end; rule++) {
    if (rule->oid != oid || !RuleMatches(scenario, rule, payload, length)) continue;
    uint32_t* served = &adapter->served[rule - scenario->rules];
    if (rule->hasTimes && *served >= rule->times) continue;
    if (rule->hasTimes) ++*served;
    return ApplyRule(scenario, rule, payload, length);
  }
  if (IsRegisterAccess(adapter, oid, length)) {
    return {AccessRegister(adapter, oid, payload), length, false};
  }
  return {{Outcome::Fails, ErrorNotSupported}, length, true};
}

NearestRule FindNearestRule(const Adapter* adapter, uint32_t oid, const uint8_t* payload,
                            uint32_t length) {
  const Scenario* scenario = adapter->scenario;
  NearestRule nearest = {};
  uint64_t most = 0;
  for (uint32_t i = 0; i < scenario->ruleCount; i++) {
    const ScenarioRule* rule = &scenario->rules[i];
    if (rule->oid != oid) continue;
    uint64_t fitting = 0;
    const NearestRule found = FindMisfit(scenario, rule, payload, length, &fitting);
    if (found.misfit < nearest.misfit) continue;
    if (found.misfit == nearest.misfit && fitting <= most) continue;
    nearest = found;
    most = fitting;
  }
  return nearest;
}
