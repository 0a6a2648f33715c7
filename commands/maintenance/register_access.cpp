#include "commands/maintenance/register_access.h"

#include "channel/driver_channel.h"
#include "channel/oid.h"

bool ReadRegister(RegAccessParam* param) {
  return OidRequest(OidReadRegister, param);
}

bool WriteRegister(RegAccessParam* param) {
  return OidRequest(OidWriteRegister, param);
}
