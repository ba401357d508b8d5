/*
 * VELS: locale and code-set support. The whole interface; each header can also be included alone.
 */
#ifndef VELS_H
#define VELS_H

#include "vels/types.h"
#include "vels/errors.h"
#include "vels/host.h"
#include "vels/registry.h"
#include "vels/names.h"
#include "vels/multibyte.h"
#include "vels/ctype.h"
#include "vels/string.h"
#include "vels/width.h"
#include "vels/collate.h"
#include "vels/number.h"
#include "vels/money.h"
#include "vels/locale.h"
#include "vels/info.h"
#include "vels/time.h"
#include "vels/charmap.h"
#include "vels/symbols.h"
#include "vels/convert.h"

#endif
