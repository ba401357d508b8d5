// Format versions of the object files, as text: they are also directory names.
#pragma once

#define VEL_CM_VERSION "3"
#define VEL_LC_VERSION "11"
#define VEL_CV_VERSION "9"
