#include "gnssutils/Codec.h"
