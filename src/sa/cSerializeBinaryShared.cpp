#include "sa/cSerializeBinaryShared.h"

namespace msa
{

char const* cSerializeBinaryShared::idToString(PrivatedTypeIDs eId)
{
  static char const* const names[] = {"invalid",      "rawBytes", "piUChar",  "piChar",  "piUInt32",
                                      "piInt32",      "piUInt64", "piInt64",  "piBool",  "piDouble",
                                      "cAsciiString", "cString",  "context",  "label",   "rawBytes64",
                                      "context64",    "cString",  "piUInt16", "piInt16", "invalid"};
  return static_cast<unsigned int>(eId) < sizeof(names) / sizeof(names[0]) ? names[eId] : "unknown type";
}

} // namespace msa
