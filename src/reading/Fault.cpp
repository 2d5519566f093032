#include "consolidated/Fault.h"

namespace consolidated {

namespace {

struct Wording {
  const char* name;
  const char* sentence;
};

Wording wordingOf(FaultCode code) {
  switch (code) {
    case FaultCode::CannotOpen:
      return {"cannot-open", "The file cannot be opened."};
    case FaultCode::CannotRead:
      return {"cannot-read", "The file cannot be read."};
    case FaultCode::OutOfMemory:
      return {"out-of-memory", "There is no memory for the bytes of the file."};
    case FaultCode::ShortHeader:
      return {"short-header", "The file is shorter than the header of a consolidated file."};
    case FaultCode::WrongMagic:
      return {"wrong-magic", "The file does not begin with the magic of a consolidated file."};
    case FaultCode::ShortTable:
      return {"short-table", "The section table claims more entries than the file holds."};
    case FaultCode::UnknownKind:
      return {"unknown-kind", "The section is of a kind that is not known."};
    case FaultCode::NegativeOffset:
      return {"negative-offset", "The offset of the section is negative once cut to 32 bits."};
    case FaultCode::SectionOutside:
      return {"section-outside", "The section goes beyond the end of the file."};
    case FaultCode::RecordsShort:
      return {"records-short", "The kernel records go beyond the end of the file."};
  }
  return {"unknown-fault", "The fault is not known."};
}

}  // namespace

const char* Fault::sentence() const noexcept { return wordingOf(code).sentence; }

const char* Fault::name() const noexcept { return wordingOf(code).name; }

}  // namespace consolidated
