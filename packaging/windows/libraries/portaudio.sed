# For a newer compiler than it knows, whose own headers for WASAPI are complete.
# configure:
s|-I[^ ]*mingw-include||
s|-mthreads||
# pa_win_wasapi.c:
s|^#if defined(_MSC_VER) && (_MSC_VER >= 1400)|#if 1|
s|<Avrt.h>|<avrt.h>|
s|<Audioclient.h>|<initguid.h>\n#include <audioclient.h>|
s|<functiondiscoverykeys.h>|<functiondiscoverykeys_devpkey.h>|
