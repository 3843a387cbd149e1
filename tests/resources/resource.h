// The identifiers of the scripts here, for them and the test alike.
#define IDD_SETTINGS 300
#define IDD_PLAIN 301
#define IDC_NAME 1001
#define IDB_CLOSE 101
#define IDH_HELP 200
#define IDR_STYLES 400
#define IDR_VARIANT 401
#define IDR_PLUGIN 500
