// a8000sim.sys: the simulated adapter as a kernel-mode driver. Programs open \\.\A8000, the control
// program opens \\.\A8000Control. What is answered is decided in driver_front.cpp.
#include <intrin.h>
// The kernel headers define two of the compiler's functions again, which C++ does not allow.
#define InterlockedBitTestAndSet KernelBitTestAndSet
#define InterlockedBitTestAndReset KernelBitTestAndReset
#include <ntifs.h>
#undef InterlockedBitTestAndSet
#undef InterlockedBitTestAndReset

#include <bit>
#include <cstring>

#include "simulator/windows/driver_front.h"
#include "simulator/windows/nt_status.h"

#ifndef MdlMappingNoExecute
#define MdlMappingNoExecute 0x40000000
#endif

namespace {

constexpr ULONG PoolTag = 0x38303041;  // "A008"

// ExAllocatePool2, which Windows has since version 2004 of Windows 10. It returns cleared memory.
using PoolAllocator = void*(NTAPI*)(ULONG64 flags, SIZE_T size, ULONG tag);
constexpr ULONG64 PagedPoolFlag = 0x100;

struct DriverState {
  PoolAllocator allocate;  // null if there is none
  DEVICE_OBJECT* device;
  DEVICE_OBJECT* control;
  bool controlLinked;
  bool deviceLinked;
  FAST_MUTEX mutex;  // guards the front
  DriverFront front;
};

DriverState* State() {
  static DriverState state;
  return &state;
}

// The kernel only reads the texts of the names that it is given.
template <size_t Size>
UNICODE_STRING NameOf(const wchar_t (&text)[Size]) {
  return {(Size - 1) * sizeof(wchar_t), Size * sizeof(wchar_t), const_cast<wchar_t*>(text)};
}

UNICODE_STRING DeviceName() {
  return NameOf(L"\\Device\\A8000");
}

UNICODE_STRING DeviceLinkName() {
  return NameOf(L"\\??\\A8000");
}

UNICODE_STRING ControlName() {
  return NameOf(L"\\Device\\A8000Control");
}

UNICODE_STRING ControlLinkName() {
  return NameOf(L"\\??\\A8000Control");
}

void* Allocate(uint64_t size) {
  const PoolAllocator allocate = State()->allocate;
  if (allocate != nullptr) return allocate(PagedPoolFlag, size, PoolTag);
  void* memory = ExAllocatePoolWithTag(PagedPool, size, PoolTag);
  if (memory != nullptr) memset(memory, 0, size);
  return memory;
}

void Release(void* memory) {
  ExFreePoolWithTag(memory, PoolTag);
}

NTSTATUS StatusOf(FrontReply reply) {
  if (!reply.failed) return STATUS_SUCCESS;
  return static_cast<NTSTATUS>(StatusOfError(reply.error, reply.returned != 0));
}

NTSTATUS Complete(IRP* irp, NTSTATUS status, ULONG_PTR returned) {
  irp->IoStatus.Status = status;
  irp->IoStatus.Information = returned;
  IoCompleteRequest(irp, IO_NO_INCREMENT);
  return status;
}

OpenTerms TermsOf(const IO_STACK_LOCATION* call) {
  const auto& create = call->Parameters.Create;
  // Some hosts do not give the rights.
  const ACCESS_MASK access = create.SecurityContext != nullptr
                                 ? create.SecurityContext->DesiredAccess
                                 : ReadAndWriteRights;
  return {access, create.ShareAccess, create.Options, create.FileAttributes};
}

NTSTATUS NTAPI HandleCreate(DEVICE_OBJECT* device, IRP* irp) {
  DriverState* state = State();
  const IO_STACK_LOCATION* call = IoGetCurrentIrpStackLocation(irp);
  // No path may follow a device's name.
  if (call->FileObject->FileName.Length > 0) return Complete(irp, STATUS_OBJECT_NAME_NOT_FOUND, 0);
  if (device == state->control) return Complete(irp, STATUS_SUCCESS, 0);
  const OpenTerms terms = TermsOf(call);
  ExAcquireFastMutex(&state->mutex);
  const FrontReply reply = FrontOpen(&state->front, terms);
  ExReleaseFastMutex(&state->mutex);
  // On some hosts a failed opening yields a handle, too. This marks a handle that was opened.
  if (!reply.failed) call->FileObject->FsContext = state;
  return Complete(irp, StatusOf(reply), 0);
}

// On Windows closing cannot fail, whatever the scenario says.
NTSTATUS NTAPI HandleClose(DEVICE_OBJECT* /*device*/, IRP* irp) {
  DriverState* state = State();
  if (IoGetCurrentIrpStackLocation(irp)->FileObject->FsContext != nullptr) {
    ExAcquireFastMutex(&state->mutex);
    FrontClose(&state->front);
    ExReleaseFastMutex(&state->mutex);
  }
  return Complete(irp, STATUS_SUCCESS, 0);
}

NTSTATUS NTAPI HandleCleanup(DEVICE_OBJECT* /*device*/, IRP* irp) {
  return Complete(irp, STATUS_SUCCESS, 0);
}

// The payload is the memory that the MDL describes. A payload of no bytes has no memory to map. One
// that is too large is not touched.
NTSTATUS AnswerProgram(DriverState* state, IRP* irp, const IO_STACK_LOCATION* call) {
  const auto& control = call->Parameters.DeviceIoControl;
  if (call->FileObject->FsContext == nullptr) return Complete(irp, STATUS_INVALID_HANDLE, 0);
  void* payload = nullptr;
  const ULONG length = irp->MdlAddress != nullptr ? control.OutputBufferLength : 0;
  if (length > 0 && length <= MaxPayloadBytes) {
    // The kernel takes flags with the priority. In some headers the type has no room for them.
    const ULONG priority = NormalPagePriority | MdlMappingNoExecute;
    payload =
        MmGetSystemAddressForMdlSafe(irp->MdlAddress, std::bit_cast<MM_PAGE_PRIORITY>(priority));
    if (payload == nullptr) return Complete(irp, STATUS_INSUFFICIENT_RESOURCES, 0);
  }
  ExAcquireFastMutex(&state->mutex);
  const FrontReply reply =
      FrontRequest(&state->front, control.IoControlCode, irp->AssociatedIrp.SystemBuffer,
                   control.InputBufferLength, payload, length);
  ExReleaseFastMutex(&state->mutex);
  return Complete(irp, StatusOf(reply), reply.returned);
}

NTSTATUS AnswerControl(DriverState* state, IRP* irp, const IO_STACK_LOCATION* call) {
  const auto& control = call->Parameters.DeviceIoControl;
  ExAcquireFastMutex(&state->mutex);
  const FrontReply reply =
      FrontControl(&state->front, control.IoControlCode, irp->AssociatedIrp.SystemBuffer,
                   control.InputBufferLength, control.OutputBufferLength);
  ExReleaseFastMutex(&state->mutex);
  return Complete(irp, StatusOf(reply), reply.returned);
}

NTSTATUS NTAPI HandleDeviceControl(DEVICE_OBJECT* device, IRP* irp) {
  DriverState* state = State();
  const IO_STACK_LOCATION* call = IoGetCurrentIrpStackLocation(irp);
  return device == state->control ? AnswerControl(state, irp, call)
                                  : AnswerProgram(state, irp, call);
}

// An access list as the kernel reads it: administrators and the system may do everything, all
// others nothing.
struct AccessEntry {
  UCHAR type;  // 0: allowed
  UCHAR flags;
  USHORT size;
  ULONG mask;
};

struct AdministratorsOnly {
  UCHAR revision;
  UCHAR reserved;
  USHORT control;
  ULONG owner;
  ULONG group;
  ULONG systemList;
  ULONG list;  // offset of the list
  ACL header;
  AccessEntry system;
  UCHAR systemId[12];
  AccessEntry administrators;
  UCHAR administratorsId[16];
};
static_assert(sizeof(AdministratorsOnly) == 72);

bool RestrictToAdministrators(DEVICE_OBJECT* device) {
  static const AdministratorsOnly descriptor = {
      .revision = SECURITY_DESCRIPTOR_REVISION,
      .reserved = 0,
      .control = SE_SELF_RELATIVE | SE_DACL_PROTECTED | SE_DACL_PRESENT,
      .owner = 0,
      .group = 0,
      .systemList = 0,
      .list = offsetof(AdministratorsOnly, header),
      .header = {.AclRevision = ACL_REVISION,
                 .Sbz1 = 0,
                 .AclSize = sizeof(AdministratorsOnly) - offsetof(AdministratorsOnly, header),
                 .AceCount = 2,
                 .Sbz2 = 0},
      .system = {0, 0, 20, FILE_ALL_ACCESS},
      .systemId = {1, 1, 0, 0, 0, 0, 0, 5, 18},  // S-1-5-18
      .administrators = {0, 0, 24, FILE_ALL_ACCESS},
      .administratorsId = {1, 2, 0, 0, 0, 0, 0, 5, 32, 0, 0, 0, 0x20, 2},  // S-1-5-32-544
  };
  HANDLE handle = nullptr;
  if (!NT_SUCCESS(ObOpenObjectByPointer(device, OBJ_KERNEL_HANDLE, nullptr, WRITE_DAC, nullptr,
                                        KernelMode, &handle))) {
    return false;
  }
  AdministratorsOnly copy = descriptor;
  const NTSTATUS status = ZwSetSecurityObject(handle, DACL_SECURITY_INFORMATION, &copy);
  ZwClose(handle);
  return NT_SUCCESS(status);
}

// Removes what this driver has made. A name that it did not make may belong to another driver.
void NTAPI Unload(DRIVER_OBJECT* /*driver*/) {
  DriverState* state = State();
  UNICODE_STRING link = DeviceLinkName();
  UNICODE_STRING controlLink = ControlLinkName();
  if (state->deviceLinked) IoDeleteSymbolicLink(&link);
  if (state->controlLinked) IoDeleteSymbolicLink(&controlLink);
  if (state->control != nullptr) IoDeleteDevice(state->control);
  if (state->device != nullptr) IoDeleteDevice(state->device);
  FrontStop(&state->front);
}

NTSTATUS CreateDevices(DRIVER_OBJECT* driver, DriverState* state) {
  UNICODE_STRING name = DeviceName();
  UNICODE_STRING link = DeviceLinkName();
  UNICODE_STRING controlName = ControlName();
  UNICODE_STRING controlLink = ControlLinkName();
  NTSTATUS status = IoCreateDevice(driver, 0, &name, FILE_DEVICE_UNKNOWN, FILE_DEVICE_SECURE_OPEN,
                                   FALSE, &state->device);
  if (!NT_SUCCESS(status)) return status;
  status = IoCreateDevice(driver, 0, &controlName, FILE_DEVICE_UNKNOWN, FILE_DEVICE_SECURE_OPEN,
                          FALSE, &state->control);
  if (!NT_SUCCESS(status)) return status;
  if (!RestrictToAdministrators(state->control)) return STATUS_UNSUCCESSFUL;
  status = IoCreateSymbolicLink(&controlLink, &controlName);
  if (!NT_SUCCESS(status)) return status;
  state->controlLinked = true;
  status = IoCreateSymbolicLink(&link, &name);
  state->deviceLinked = NT_SUCCESS(status);
  return status;
}

}  // namespace

extern "C" NTSTATUS NTAPI DriverEntry(DRIVER_OBJECT* driver, UNICODE_STRING* /*registryPath*/) {
  DriverState* state = State();
  UNICODE_STRING allocator = NameOf(L"ExAllocatePool2");
  state->allocate = std::bit_cast<PoolAllocator>(MmGetSystemRoutineAddress(&allocator));
  ExInitializeFastMutex(&state->mutex);
  driver->MajorFunction[IRP_MJ_CREATE] = HandleCreate;
  driver->MajorFunction[IRP_MJ_CLOSE] = HandleClose;
  driver->MajorFunction[IRP_MJ_CLEANUP] = HandleCleanup;
  driver->MajorFunction[IRP_MJ_DEVICE_CONTROL] = HandleDeviceControl;
  driver->DriverUnload = Unload;
  if (!FrontStart(&state->front, {Allocate, Release})) return STATUS_INSUFFICIENT_RESOURCES;
  const NTSTATUS status = CreateDevices(driver, state);
  if (!NT_SUCCESS(status)) Unload(driver);
  return status;
}
