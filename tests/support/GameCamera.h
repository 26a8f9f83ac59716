#pragma once

/// Loads the matrices of the game's camera: ten units in front of the track, 45 degrees from top to bottom.
/// `aspect` is the window's width divided by its height.
void lookThroughGameCamera(double aspect);

/// Half of the world's width that such a camera shows.
double halfViewWidth(double aspect);
