#ifndef MORTISE_PI_PIVERSION_H
#define MORTISE_PI_PIVERSION_H

/// \name Version of the library
/// The build reads them from here.
/// @{
#define MORTISE_VERSION_MAJOR 0
#define MORTISE_VERSION_MINOR 1
#define MORTISE_VERSION_PATCH 0
/// @}

#endif
