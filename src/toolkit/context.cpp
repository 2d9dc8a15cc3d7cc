// K_KCCInit and K_KCCTerm: the toolkit's part of a context.
#include "toolkit/memory.h"

#include <morvane/toolkit.h>

int32_t K_KCCInit(K_CONTEXT* context) {
    if (context == nullptr) return -1;
    if (context->crypto != nullptr) return 0;
    if (context->companion_initialised == 0 && K_KCOInit(context) != 0) {
        K_KCCTerm(context);
        return -1;
    }
    morvane::toolkit::Block<KccContext> crypto(context);
    if (!crypto) {
        context->last_error = KERR_MEMORY;
        K_KCCTerm(context);
        return -1;
    }
    crypto->context = context;
    context->crypto = crypto.release();
    return 0;
}

void K_KCCTerm(K_CONTEXT* context) {
    if (context == nullptr || context->crypto == nullptr) return;
    if (context->companion_initialised != 0) {
        K_KCOTerm(context);
        context->companion_initialised = 0;
    }
    K_free(context, context->crypto);
    context->crypto = nullptr;
}
