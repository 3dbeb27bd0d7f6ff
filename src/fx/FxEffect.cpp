#include "fx/FxEffect.h"
