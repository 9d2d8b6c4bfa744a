#ifndef TARVO_PERSISTENCY_ICON_H
#define TARVO_PERSISTENCY_ICON_H

#include <string>

// The drawing of a type: "<name>.svg" (or ".png" for a raster drawing), its size in drawing units.
struct Icon {
    std::string name;
    double width;
    double height;
};

#endif
