#pragma once

/// Stands where an extension loader would be initialised. Every GL entry point comes from the GL library
/// itself, so there is nothing to load.
void glewInit();
