#pragma once

/// The place to load GL extensions; where the GL library has every entry point, it does nothing.
void glewInit();
