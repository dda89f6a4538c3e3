#include "gnssutils/GnssUtils.h"

int InitGnssUtils()
{
    return 0;
}
