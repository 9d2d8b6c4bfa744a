#include <tarvo/utility/Error.h>

Error::Error(const std::string& function) : message_("Error was thrown by function: " + function + "\n") {}

void Error::append(const std::string& function) { addSection("Called from function: " + function); }

void Error::addSection(const std::string& text) { message_ += text + "\n"; }

ErrorRunTime::ErrorRunTime(const std::string& function, const std::string& text) : Error(function) {
    addSection("Generic Run-Time error: " + text);
}

ErrorJson::ErrorJson(const std::string& function, const std::string& text) : Error(function) {
    addSection("JSON parsing error: " + text);
}

ErrorSmartEnum::ErrorSmartEnum(const std::string& function, const std::string& enumerator,
                               const std::string& value)
    : Error(function) {
    addSection("Smart enumerator error: Unrecognized " + enumerator + ": " + value);
}

ErrorSmartEnum::ErrorSmartEnum(const std::string& function, const std::string& model,
                               const std::string& enumerator, const std::string& value)
    : Error(function) {
    addSection("Error type: Smart enumerator error: Unrecognized " + enumerator + " in model " + model + ": " +
               value);
}

ErrorBrowsing::ErrorBrowsing(const std::string& function, const std::string& text) : Error(function) {
    addSection("Model browsing error: " + text);
}

ErrorBrowsing ErrorBrowsing::objectNotFound(const std::string& function, const std::string& model,
                                            const std::string& type, const std::string& object) {
    return ErrorBrowsing(function, "Object " + object + " not found in model " + model + " of type " + type);
}

ErrorBrowsing ErrorBrowsing::unrecognized(const std::string& function, const std::string& model,
                                          const std::string& type, const std::string& what) {
    return ErrorBrowsing(function, "In model " + model + " of type " + type + " unrecognized " + what);
}

ErrorBrowsing ErrorBrowsing::unsupportedOption(const std::string& function, const std::string& option,
                                               const std::string& string, const std::string& model,
                                               const std::string& type) {
    return ErrorBrowsing(function, "Unsupported option " + option + " for String " + string + " in model " +
                                       model + " of type " + type);
}

ErrorObjectFactory::ErrorObjectFactory(const std::string& function, const std::string& what) : Error(function) {
    addSection("Object factory error: Unsupported type: " + what);
}

ErrorObjectFactory::ErrorObjectFactory(const std::string& function, const std::string& subject,
                                       const std::string& text)
    : Error(function) {
    addSection("Object factory error: " + text + ": " + subject);
}

ErrorDynamicCast::ErrorDynamicCast(const std::string& function, const std::string& type,
                                   const std::string& target, const std::string& model)
    : Error(function) {
    addSection("Dynamic cast error: Unsupported conversion of model " + model + " of type: " + type +
               " to type: " + target);
}

ErrorInvalidCharacter::ErrorInvalidCharacter(const std::string& function, const std::string& field,
                                             const std::string& text)
    : Error(function) {
    addSection("Invalid characters error: Field " + field +
               " contains invalid characters or does not begin with an alphabetic element: \"" + text + "\"");
}

ErrorConnectivity::ErrorConnectivity(const std::string& function, const std::string& a, const std::string& b)
    : Error(function) {
    addSection("Flowsheet connectivity error: " + a + " " + b);
}

ErrorConnectivity::ErrorConnectivity(const std::string& function, const std::string& vertex,
                                     const std::string& type, const std::string& port)
    : Error(function) {
    addSection("Flowsheet connectivity error: Impossible to attach port " + port + " to Vertex " + vertex +
               " of type " + type);
}

ErrorUnit::ErrorUnit(const std::string& function, const std::string& text, const std::string& a,
                     const std::string& b)
    : Error(function) {
    addSection("Error type: Unit of measurement error - " + text + " <" + a + "> <" + b + ">");
}

ErrorUnit::ErrorUnit(const std::string& function, const std::string& text, const std::string& a)
    : Error(function) {
    addSection("Error type: Unit of measurement error - " + text + " <" + a + ">");
}

ErrorUnit::ErrorUnit(const std::string& function, const std::string& unit) : Error(function) {
    addSection("Error type: Unit of measurement error - unsupported unit [" + unit + "]");
}

ErrorNoComponent::ErrorNoComponent(const std::string& function, const std::string& component)
    : Error(function) {
    addSection("Non-existing component error: Component " + component + " not found in component list");
}

ErrorNoComponent::ErrorNoComponent(const std::string& function, int index) : Error(function) {
    addSection("Non-existing component error\nComponent " + std::to_string(index) +
               " not found in component list");
}

ErrorScaler::ErrorScaler(const std::string& function, const std::string& text) : Error(function) {
    addSection("Error type: Scaler error" + text);
}
