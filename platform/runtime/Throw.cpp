/* The functions through which the C++ library's templates throw. The compiler's own would add every exception
 * type, a second kind of strings, a translator of messages and a printf to the image.
 *
 * No code catches a wrong use of the C++ library by its type, only all exceptions together; one class
 * therefore stands for all wrong uses. */
#include <exception>
#include <new>

namespace {

class LogicError : public std::exception {
public:
    explicit LogicError(const char* text) noexcept : description(text) {}
    [[nodiscard]] const char* what() const noexcept override { return description; }

private:
    const char* description; /* a string literal of the C++ library */
};

}  // namespace

namespace std {

void __throw_bad_alloc() {
    throw bad_alloc();
}

void __throw_bad_array_new_length() {
    throw bad_array_new_length();
}

void __throw_length_error(const char* what) {
    throw LogicError(what);
}

void __throw_logic_error(const char* what) {
    throw LogicError(what);
}

void __throw_out_of_range(const char* what) {
    throw LogicError(what);
}

void __throw_out_of_range_fmt(const char* format, ...) {
    throw LogicError(format);
}

}  // namespace std
