#pragma once

// The icons that are compiled into the program, as XPM data.

extern const char* const filenew[];
extern const char* const fileopen[];
extern const char* const filesave[];
