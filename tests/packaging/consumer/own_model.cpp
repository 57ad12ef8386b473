// The library's header takes the annotation model from the viewer, not from the folder beside it.
#include <dorvale/dorvale.h>

#ifndef VIEWERS_OWN_MODEL
#error "dorvale.h has not found the viewer's own dorvale/datamanager.h"
#endif
