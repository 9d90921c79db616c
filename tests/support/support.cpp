// Anchor of the test support library.
#include "support/scripted_port.h"
