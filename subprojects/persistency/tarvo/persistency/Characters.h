#ifndef TARVO_PERSISTENCY_CHARACTERS_H
#define TARVO_PERSISTENCY_CHARACTERS_H

#include <string>

// Whether a code point is a letter: tags and descriptions begin with one.
bool isLetter(char32_t c);

// The rules for tags and descriptions of items. A tag begins with a letter and goes on with letters,
// blanks, digits and , - < > [ ] _ { }; `pathCharacters` also admits the . and : of tag paths, which
// only a later setTag may bring in. A description begins with a letter and goes on with letters,
// blanks, digits and , - . : < > [ ] _ { }. Empty texts are valid. Text that is not UTF-8 is not valid,
// and the converter's complaint goes to standard error.
bool validTag(const std::string& tag, bool pathCharacters);
bool validDescription(const std::string& description);

#endif
