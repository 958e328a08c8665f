#pragma once

// The dialog and its items.
#define IDD_POLE 100
#define IDC_COMPASS 101
#define IDC_INCLINE_LEFT 102
#define IDC_INCLINE_RIGHT 103
#define IDC_MAGNETIC_XY 104
#define IDC_MAGNETIC_XZ 105
