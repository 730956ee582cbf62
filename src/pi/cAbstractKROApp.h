#ifndef MORTISE_PI_CABSTRACTKROAPP_H
#define MORTISE_PI_CABSTRACTKROAPP_H

#include "pi/piTypes.h"

/// The application as the library knows it: an identity that is handed on, on which the library calls nothing.
/// A program derives from it and adds what its components want of their application.
class MORTISE_API cAbstractKROApp
{
public:
  virtual ~cAbstractKROApp();
};

#endif
