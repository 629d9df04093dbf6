#pragma once

#include "dj/Analysis.h"
#include "dj/Failure.h"
#include "dj/KeyText.h"
#include "dj/MixSettings.h"
#include "dj/Ordering.h"
#include "dj/SetTempo.h"
