#include "value/fi_value.h"
