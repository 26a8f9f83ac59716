#pragma once

/// Fetches what ffont and wt call beyond OpenGL 1.1 from the driver, once a window is open. Windows needs
/// that; elsewhere the GL library has every function, and nothing is done. What a driver lacks does nothing,
/// so that texts and pictures are drawn without.
void loadDriverFunctions();
