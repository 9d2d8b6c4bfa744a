#ifndef TARVO_UTILITY_ERROR_H
#define TARVO_UTILITY_ERROR_H

#include <string>

// An error that input can cause. Thrown by value and caught by reference; it is deliberately not a
// std::exception, so that handlers written for those do not swallow it. The message is a list of
// sections, each ending in a line end: where it was thrown, what went wrong, then one line for every
// function that passed it on with append().
class Error {
public:
    explicit Error(const std::string& function);
    const std::string& message() const { return message_; }
    // Records that the error passed through `function`. A handler then rethrows with `throw;`, which
    // keeps the derived class.
    void append(const std::string& function);

protected:
    void addSection(const std::string& text);

private:
    std::string message_;
};

class ErrorRunTime : public Error {
public:
    ErrorRunTime(const std::string& function, const std::string& text);
};

class ErrorJson : public Error {
public:
    ErrorJson(const std::string& function, const std::string& text);
};

class ErrorSmartEnum : public Error {
public:
    ErrorSmartEnum(const std::string& function, const std::string& enumerator, const std::string& value);
    ErrorSmartEnum(const std::string& function, const std::string& model, const std::string& enumerator,
                   const std::string& value);
};

class ErrorBrowsing : public Error {
public:
    // Three messages share the same argument types, so they are told apart by name.
    static ErrorBrowsing objectNotFound(const std::string& function, const std::string& model,
                                        const std::string& type, const std::string& object);
    static ErrorBrowsing unrecognized(const std::string& function, const std::string& model,
                                      const std::string& type, const std::string& what);
    static ErrorBrowsing unsupportedOption(const std::string& function, const std::string& option,
                                           const std::string& string, const std::string& model,
                                           const std::string& type);

private:
    ErrorBrowsing(const std::string& function, const std::string& text);
};

class ErrorObjectFactory : public Error {
public:
    ErrorObjectFactory(const std::string& function, const std::string& what);
    ErrorObjectFactory(const std::string& function, const std::string& subject, const std::string& text);
};

class ErrorDynamicCast : public Error {
public:
    ErrorDynamicCast(const std::string& function, const std::string& type, const std::string& target,
                     const std::string& model);
};

class ErrorInvalidCharacter : public Error {
public:
    ErrorInvalidCharacter(const std::string& function, const std::string& field, const std::string& text);
};

class ErrorConnectivity : public Error {
public:
    ErrorConnectivity(const std::string& function, const std::string& a, const std::string& b);
    ErrorConnectivity(const std::string& function, const std::string& vertex, const std::string& type,
                      const std::string& port);
};

class ErrorUnit : public Error {
public:
    ErrorUnit(const std::string& function, const std::string& text, const std::string& a,
              const std::string& b);
    ErrorUnit(const std::string& function, const std::string& text, const std::string& a);
    // An unknown unit string.
    ErrorUnit(const std::string& function, const std::string& unit);
};

class ErrorNoComponent : public Error {
public:
    ErrorNoComponent(const std::string& function, const std::string& component);
    ErrorNoComponent(const std::string& function, int index);
};

class ErrorScaler : public Error {
public:
    ErrorScaler(const std::string& function, const std::string& text);
};

#endif
