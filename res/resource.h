/* Numbers shared by the resource script and the code. Those of dialogs, controls, strings and icons are
   fixed: scripts and accessibility tools of users find the controls by them. */
#pragma once

#ifndef IDC_STATIC
#define IDC_STATIC (-1)
#endif

/* Dialogs */
#define IDD_ABOUT 100
#define IDD_COUNTDOWN 101
#define IDD_MAIN 102

/* Icons */
#define IDI_APPLICATION_ICON 128
#define IDI_ADD 207
#define IDI_CLEAR 208
#define IDI_FOLDER 212
#define IDI_PAGE 213

/* Accelerators: in the resources, not loaded */
#define IDA_EDIT 128
#define ID_EDIT_COPY 57634
#define ID_EDIT_CUT 57635
#define ID_EDIT_PASTE 57637
#define ID_EDIT_UNDO 57643

/* Controls of the main dialog; 1 and 2 are IDOK (convert) and IDCANCEL (quit) */
#define IDC_ABOUT 57664
#define IDC_ADD 1003
#define IDC_STATUS 1004
#define IDC_CLEAR 1005
#define IDC_PAGES 1014
#define IDC_NO_TEXT 1015
#define IDC_LINES 1016
#define IDC_NO_METADATA 1017
#define IDC_EXTRA_OPTIONS 1018
#define IDC_HIDE_OUTPUT 1019
#define IDC_OPEN_DESTINATION 1022
#define IDC_OPEN_LOG 1024
#define IDC_OUTPUT_FOLDER_CHECK 1026
#define IDC_OUTPUT_FOLDER 1027
#define IDC_BROWSE 1028
#define IDC_MONOCHROME 1030
#define IDC_RESOLUTION 1032
#define IDC_RESOLUTION_CHECK 1033
#define IDC_PAGES_CHECK 1034
#define IDC_NO_OUTLINE 1036
#define IDC_NO_HYPERLINKS 1037
#define IDC_SHUT_DOWN 1038
#define IDC_FILE_LIST 1040

/* Control of the About dialog */
#define IDC_VERSION 1021

/* Control of the countdown dialog */
#define IDC_SECONDS 1039

/* Strings */
#define IDS_PROGRAM_NAME 128
#define IDS_ERROR 129
#define IDS_CONVERTER_MISSING 130
#define IDS_CONVERSION_FINISHED 131
#define IDS_CONVERTING 132
#define IDS_TIP_HIDE_OUTPUT 133
#define IDS_SHELL_EXECUTE_FAILED 134
#define IDS_CREATE_PROCESS_FAILED 135
#define IDS_TIP_OUTPUT_FOLDER 136
#define IDS_TIP_VISIBLE_CONSOLES 137
#define IDS_TIP_SHUT_DOWN 138
#define IDS_STOP 139
#define IDS_LOG_DURATION 140
#define IDS_QUIT 141
#define IDS_BAD_OUTPUT_FOLDER 142
#define IDS_COLUMN_TITLES 143
#define IDS_CONFIRM_STOP 144
#define IDS_CANCELLED 145
#define IDS_LOG_FINISHED 146
#define IDS_TIP_ADD 147
#define IDS_TIP_PAGES 204
#define IDS_TIP_EXTRA_OPTIONS 205
#define IDS_READY 57345
