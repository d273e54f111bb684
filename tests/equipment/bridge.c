/* Under Wine, pdf2djvu.exe: runs the converter of the system that Wine runs on, with the same options. Built
   as a Wine program that may also call that system (winegcc), so it can both translate paths and wait for a
   process there. Options pass as they are; an argument that is a full Windows path becomes the other system's
   path. The converter's messages (all on its error output) and its exit code are passed on. However this program
   ends, the converter ends with it. */
#define _GNU_SOURCE /* pipe2 */
#include <windows.h>

#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <string.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

/* Exported by Wine's kernel32; its development headers leave it out. */
extern char* CDECL wine_get_unix_file_name(LPCWSTR dosPath);

static const char converter[] = "/usr/bin/pdf2djvu";

enum { cannotPrepare = 126, cannotStart = 127, endedBySignal = 128 };

/* Written before the handler is installed, read by it on a thread of its own. */
static volatile pid_t converterId;

static int fail(const char* what, int code) {
    DWORD written;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), what, (DWORD)strlen(what), &written, NULL);
    return code;
}

static BOOL isFullPath(const WCHAR* text) {
    const BOOL onDrive = text[0] && text[1] == ':' && (text[2] == '\\' || text[2] == '/');
    const BOOL onNetwork = text[0] == '\\' && text[1] == '\\';
    return onDrive || onNetwork;
}

/* Null when memory runs out. Never freed: the arguments live as long as the program. */
static char* translate(const WCHAR* argument) {
    char* text = isFullPath(argument) ? wine_get_unix_file_name(argument) : NULL;
    int size;
    if (text) return text;
    size = WideCharToMultiByte(CP_UTF8, 0, argument, -1, NULL, 0, NULL, NULL);
    text = malloc((size_t)size);
    if (text) WideCharToMultiByte(CP_UTF8, 0, argument, -1, text, size, NULL, NULL);
    return text;
}

/* A stopped batch closes the console: the converter must go with it, as it would on Windows. */
static BOOL WINAPI endConverter(DWORD event) {
    (void)event;
    kill(converterId, SIGTERM);
    return FALSE;
}

/* The converter leaves its unfinished files behind when it is ended: they go where programs of Windows leave
   theirs. */
static void chooseTemporaryFolder(void) {
    WCHAR folder[MAX_PATH + 1];
    char* path;
    if (!GetTempPathW(MAX_PATH + 1, folder)) return;
    path = wine_get_unix_file_name(folder);
    if (path) setenv("TMPDIR", path, 1);
}

/* In the new process, which may do little before it has become the converter. */
static void becomeConverter(char** arguments, int messages, pid_t parent) {
    sigset_t none;
    int number;
    /* A program that is ended by another gets no chance to end its converter: the system does it. */
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(cannotStart);
    /* No signal ignored or blocked: Wine's own settings are not meant for it. */
    for (number = 1; number < NSIG; number++) signal(number, SIG_DFL);
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, NULL);
    dup2(open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
    dup2(messages, STDOUT_FILENO);
    dup2(messages, STDERR_FILENO);
    execv(converter, arguments);
    _exit(cannotStart);
}

/* `messages`: where the converter writes. */
static int startConverter(char** arguments, int messages) {
    const pid_t parent = getpid();
    sigset_t all, before;
    pid_t id;
    /* Until the new process has settled its own, no signal may reach what Wine installed for this one. */
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    id = fork();
    if (id == 0) becomeConverter(arguments, messages, parent);
    pthread_sigmask(SIG_SETMASK, &before, NULL);
    if (id > 0) converterId = id;
    return id < 0;
}

static void forwardMessages(int from) {
    const HANDLE to = GetStdHandle(STD_ERROR_HANDLE);
    char bytes[4096];
    ssize_t count;
    DWORD written;
    while ((count = read(from, bytes, sizeof bytes)) > 0 || (count < 0 && errno == EINTR))
        if (count > 0) WriteFile(to, bytes, (DWORD)count, &written, NULL);
}

static int waitForConverter(void) {
    int status = 0;
    while (waitpid(converterId, &status, 0) < 0)
        if (errno != EINTR) return fail("bridge: the converter's end was not seen\n", cannotPrepare);
    if (WIFEXITED(status) && WEXITSTATUS(status) == cannotStart) {
        return fail("bridge: /usr/bin/pdf2djvu does not start\n", cannotStart);
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : endedBySignal + WTERMSIG(status);
}

int wmain(int argc, WCHAR** argv) {
    char** arguments = calloc((size_t)argc + 1, sizeof *arguments);
    int ends[2], i;
    if (!arguments) return fail("bridge: no memory\n", cannotPrepare);
    arguments[0] = (char*)converter;
    for (i = 1; i < argc; i++)
        if (!(arguments[i] = translate(argv[i]))) return fail("bridge: no memory\n", cannotPrepare);
    /* Of both ends the converter has none but those it is given. */
    if (pipe2(ends, O_CLOEXEC)) return fail("bridge: no pipe\n", cannotPrepare);
    chooseTemporaryFolder();
    if (startConverter(arguments, ends[1])) return fail("bridge: no process\n", cannotStart);
    SetConsoleCtrlHandler(endConverter, TRUE);
    close(ends[1]);
    forwardMessages(ends[0]);
    return waitForConverter();
}
