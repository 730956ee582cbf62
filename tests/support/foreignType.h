#ifndef MORTISE_TESTS_SUPPORT_FOREIGNTYPE_H
#define MORTISE_TESTS_SUPPORT_FOREIGNTYPE_H

namespace msa
{
class cReferenceFrame;
}

namespace support
{

/// Appends a reference to a variable of a type that is called as a `cSeenTwice` in the unnamed namespace of any other
/// source, has the same fields and is another type to the compiler: as one type is that two libraries keep for
/// themselves. The variable lives as long as the program.
int& addForeign(msa::cReferenceFrame& frame);

} // namespace support

#endif
