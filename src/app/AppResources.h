#pragma once

// Resource identifiers shared by the resource script and the code.
#define TOLMO_ICON_APP 101
