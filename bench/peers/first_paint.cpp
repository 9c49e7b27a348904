// Preloaded into a program with a window, ends it when the first picture of the window goes to the
// display.

#include <unistd.h>

extern "C" {

struct Cookie
{
    unsigned int sequence;
};

Cookie xcb_put_image()
{
    ::_exit(0);
}

Cookie xcb_shm_put_image()
{
    ::_exit(0);
}

} // extern "C"
