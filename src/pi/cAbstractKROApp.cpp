#include "pi/cAbstractKROApp.h"

cAbstractKROApp::~cAbstractKROApp() = default;
