#pragma once

#include "dj/Analysis.h"
#include "dj/CueSheet.h"
#include "dj/Failure.h"
#include "dj/KeyText.h"
#include "dj/Mix.h"
#include "dj/MixSettings.h"
#include "dj/Ordering.h"
#include "dj/Render.h"
#include "dj/SetTempo.h"
#include "dj/Stopper.h"
#include "dj/Writer.h"
