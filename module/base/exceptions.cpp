#include "base/exceptions.h"

#include "platform/text.h"

#include <boost/core/demangle.hpp>

namespace orv {

namespace {

std::string nameOf(const std::type_info* type) {
    return type != nullptr ? boost::core::demangle(type->name()) : std::string("<null>");
}

} // namespace

Exception::Exception(const std::string& text) : message(text) {}

Exception::~Exception() noexcept = default;

const char* Exception::what() const noexcept { return message.c_str(); }

IOErrorException::IOErrorException(const std::wstring& text) : Exception(platform::toSystem(text)) {}

TypeMismatchException::TypeMismatchException(const std::type_info* expected, const std::type_info* got,
                                             const std::string& /*context*/)
    : Exception("type mismatch. Expected=" + nameOf(expected) + " Got=" + nameOf(got)) {}

NotFoundException::NotFoundException(unsigned int notFound, const std::string& context)
    : NotFoundException(std::to_string(notFound), context) {}

NotFoundException::NotFoundException(const std::string& notFound, const std::string& context)
    : Exception(context + " Key not found: " + notFound), key(notFound) {}

NotFoundException::~NotFoundException() noexcept = default;

AlreadyExistsException::AlreadyExistsException(unsigned int existing, const std::string& context)
    : AlreadyExistsException(std::to_string(existing), context) {}

AlreadyExistsException::AlreadyExistsException(const std::string& existing, const std::string& context)
    : Exception(context + " Key already exists: " + existing), key(existing) {}

AlreadyExistsException::~AlreadyExistsException() noexcept = default;

ExceptionButNoOutput::ExceptionButNoOutput() : Exception(std::string()) {}

} // namespace orv
