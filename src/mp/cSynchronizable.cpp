#include "mp/cSynchronizable.h"

namespace mp
{

cSynchronizable::cSynchronizable() = default;

cSynchronizable::~cSynchronizable() = default;

} // namespace mp
