#include <tarvo/persistency/Characters.h>
#include <tarvo/persistency/Item.h>
#include <tarvo/persistency/Persistent.h>
#include <tarvo/persistency/Utf.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

namespace {

std::string toUtf8(const std::u32string& text) {
    std::string out;
    if (utf32ToUtf8(text, out) != ConversionResult::ok) return std::string(1, '\0'); // no valid text
    return out;
}

} // namespace

Item::Item(const std::string& tag, const std::string& description, Persistent* parent)
    : tag_(tag), description_(description), parent_(parent) {
    if (!validTag(tag, false)) throw ErrorInvalidCharacter(TARVO_FUNCTION, "tag", tag);
    if (!validDescription(description)) throw ErrorInvalidCharacter(TARVO_FUNCTION, "description", description);
}

void Item::setTag(const std::string& tag) {
    if (!validTag(tag, true)) throw ErrorInvalidCharacter(TARVO_FUNCTION, "tag", tag);
    tag_ = tag;
}

void Item::setTag(const std::u32string& tag) { setTag(toUtf8(tag)); }

void Item::setDescription(const std::string& description) {
    if (!validDescription(description)) throw ErrorInvalidCharacter(TARVO_FUNCTION, "description", description);
    description_ = description;
}

void Item::setDescription(const std::u32string& description) { setDescription(toUtf8(description)); }

std::string Item::fullTag() const {
    if (parent_ == nullptr || parent_ == this) return tag_;
    return parent_->fullTag() + ":" + tag_;
}

bool Item::operator==(const Item& o) const {
    if (tag_ != o.tag_ || description_ != o.description_ || type() != o.type()) return false;
    if ((parent_ == nullptr) != (o.parent_ == nullptr)) return false;
    return parent_ == nullptr || parent_->tag() == o.parent_->tag();
}
