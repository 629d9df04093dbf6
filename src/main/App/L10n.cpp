#include "main/App/L10n.h"

#include "main/App/L10nTables.h"
