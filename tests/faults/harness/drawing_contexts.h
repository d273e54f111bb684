// The system's own store of drawing contexts, which it enlarges when many windows draw at once.
#pragma once

// Brings the store of this process to its full size, so that how many windows happen to draw at one moment
// adds nothing to the process's graphics objects any more. Contexts that are taken and not given back are
// then noticed from the sixty-fifth on; the program takes none.
void FillStoreOfDrawingContexts();
