#pragma once

#include "host/session.h"
