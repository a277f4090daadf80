// The gfx tests' surface helpers, linked into this folder's executable as well.
#include "gfx/test_surfaces.cpp"
