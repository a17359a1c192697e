#include <FrameworkBase/Base/TolvexException.h>

#include <sstream>

void TolvexException::KeyFunction() {
    std::ostringstream purpose;
    purpose << "This function is never called, acts as 'key function' to allow exporting typeinfo to make "
               "cross library exceptions work";
}
