/* Under Wine, pdf2djvu.exe: runs the converter of the system that Wine runs on, with the same options. Built
   as a Wine program that may also call that system (winegcc), so it can both translate paths and wait for a
   process there. Options pass as they are; an argument that is a full Windows path becomes the other system's
   path. The converter's messages (all on its error output) and its exit code come back. */
#include <windows.h>

#include <errno.h>
#include <signal.h>
#include <spawn.h>
#include <stdlib.h>
#include <string.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;
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

/* The converter gets no signal ignored or blocked: Wine's own settings are not meant for it. */
static int startConverter(char** arguments, const int pipeEnds[2]) {
    posix_spawn_file_actions_t files;
    posix_spawnattr_t attributes;
    sigset_t none, all;
    pid_t id;
    int error;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", 0, 0);
    posix_spawn_file_actions_adddup2(&files, pipeEnds[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&files, pipeEnds[1], STDERR_FILENO);
    /* A read end left open over there would keep the converter from noticing that we are gone. */
    posix_spawn_file_actions_addclose(&files, pipeEnds[0]);
    posix_spawn_file_actions_addclose(&files, pipeEnds[1]);
    error = posix_spawn(&id, converter, &files, &attributes, arguments, environ);
    posix_spawn_file_actions_destroy(&files);
    posix_spawnattr_destroy(&attributes);
    if (!error) converterId = id;
    return error;
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
    return WIFEXITED(status) ? WEXITSTATUS(status) : endedBySignal + WTERMSIG(status);
}

int wmain(int argc, WCHAR** argv) {
    char** arguments = calloc((size_t)argc + 1, sizeof *arguments);
    int ends[2], i;
    if (!arguments) return fail("bridge: no memory\n", cannotPrepare);
    arguments[0] = (char*)converter;
    for (i = 1; i < argc; i++)
        if (!(arguments[i] = translate(argv[i]))) return fail("bridge: no memory\n", cannotPrepare);
    if (pipe(ends)) return fail("bridge: no pipe\n", cannotPrepare);
    if (startConverter(arguments, ends))
        return fail("bridge: /usr/bin/pdf2djvu does not start\n", cannotStart);
    SetConsoleCtrlHandler(endConverter, TRUE);
    close(ends[1]);
    forwardMessages(ends[0]);
    return waitForConverter();
}
