#pragma once

#include "base/export.h"

#include <exception>
#include <string>
#include <typeinfo>

namespace orv {

// A failure that a caller can deal with. Thrown by value, caught by reference.
struct TALDORK_API Exception : std::exception {
    explicit Exception(const std::string& text);
    Exception(const Exception&) = default;
    Exception& operator=(const Exception&) = default;
    ~Exception() noexcept override;

    // The message, for the whole family.
    const char* what() const noexcept override;

    std::string message;
};

// A store could not be opened.
struct TALDORK_API IOErrorException : Exception {
    explicit IOErrorException(const std::wstring& text);
};

// A value is of another type than the one asked for. Null stands for an unknown type.
struct TALDORK_API TypeMismatchException : Exception {
    // `context` is accepted so that all of the family are built alike; it is no part of the message.
    TypeMismatchException(const std::type_info* expected, const std::type_info* got,
                          const std::string& context);
};

struct TALDORK_API NotFoundException : Exception {
    NotFoundException(unsigned int notFound, const std::string& context);
    NotFoundException(const std::string& notFound, const std::string& context);
    NotFoundException(const NotFoundException&) = default;
    NotFoundException& operator=(const NotFoundException&) = default;
    ~NotFoundException() noexcept override;

    std::string key;
};

struct TALDORK_API AlreadyExistsException : Exception {
    AlreadyExistsException(unsigned int existing, const std::string& context);
    AlreadyExistsException(const std::string& existing, const std::string& context);
    AlreadyExistsException(const AlreadyExistsException&) = default;
    AlreadyExistsException& operator=(const AlreadyExistsException&) = default;
    ~AlreadyExistsException() noexcept override;

    std::string key;
};

// Ends what runs under a guard without a word. For plugins of other modules that want to stop a pass quietly.
struct TALDORK_API ExceptionButNoOutput : Exception {
    ExceptionButNoOutput();
};

} // namespace orv
