#pragma once

/// The place to load GL extensions. Does nothing, because the GL library has every entry point.
void glewInit();
