#include "platform/dialect/Translator.h"

#include "platform/dialect/Parser.h"
#include "platform/dialect/Writer.h"

namespace platform::dialect {

Translation Translator::translate(const Source& source) const {
    const SyntaxTree tree = Parser(source).parse();
    return Writer(catalog_, source).write(tree);
}

} // namespace platform::dialect
