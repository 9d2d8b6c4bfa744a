#include <tarvo/models/ModelCollection.h>

namespace Tarvo::Models {

void registerModelCollection() {
    // The membrane modules and reference flowsheets register here as they are built.
}

} // namespace Tarvo::Models
