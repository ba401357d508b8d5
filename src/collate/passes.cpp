// What a collation says about its passes.
#include "ext/error.h"
#include "record/record.h"
#include "vels/collate.h"

using namespace vel;

int32_t vel_getpassdirection(vel_locale *locale, int32_t pass) {
    if (!locale) return -1;
    const collate_category &collate = locale->collate;
    if (collate.kind == collation_thai) return fail(locale, VEL_EBADMODE);
    if (pass < 1 || pass > collate.pass_count) return fail(locale, VEL_ENOPRINT);
    int32_t direction = collate.passes[pass - 1].direction;
    bool known = direction == pass_forward || direction == pass_backward;
    return known ? direction : fail(locale, VEL_ENOTFOUND);
}
