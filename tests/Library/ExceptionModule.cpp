#include <FrameworkBase/Base/TolvexException.h>

#include <exception>
#include <typeinfo>

/// Catches what `action` throws, by value, and throws another with the same message in brackets.
extern "C" FRAMEWORKBASE_EXPORT void Rethrow(void (*action)(), const std::type_info*& caught) {
    try {
        action();
    } catch (const std::exception&) {
        caught = &typeid(std::exception);
    } catch (TolvexException exception) { // NOLINT(misc-throw-by-value-catch-by-reference)
        caught = &typeid(TolvexException);
        throw TolvexException(('[' + exception.message + ']').c_str());
    }
}
