#include "engine/row.h"
