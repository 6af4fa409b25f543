// The system's own header, without the macros that collide with our names. Only this header includes it.
#ifndef QUILLMARSH_SOURCE_PLATFORM_WIN32_WINDOWS_H
#define QUILLMARSH_SOURCE_PLATFORM_WIN32_WINDOWS_H

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef STRICT
#define STRICT
#endif
#undef _WIN32_WINNT
#define _WIN32_WINNT 0x0601
#undef WINVER
#define WINVER _WIN32_WINNT

#include <windows.h>

#include <mmsystem.h>

// Call the system's functions by their full names, which end in A or W.
#undef CopyFile
#undef CreateDialog
#undef CreateDirectory
#undef CreateEvent
#undef CreateFile
#undef CreateFont
#undef CreateMutex
#undef CreateProcess
#undef CreateWindow
#undef DeleteFile
#undef DispatchMessage
#undef DrawState
#undef DrawText
#undef ERROR
#undef ExpandEnvironmentStrings
#undef FindFirstFile
#undef FindNextFile
#undef FindResource
#undef FindText
#undef FindWindow
#undef FormatMessage
#undef GetClassInfo
#undef GetClassName
#undef GetCommandLine
#undef GetComputerName
#undef GetCurrentDirectory
#undef GetCurrentTime
#undef GetDriveType
#undef GetEnvironmentVariable
#undef GetFileAttributes
#undef GetFreeSpace
#undef GetFullPathName
#undef GetLongPathName
#undef GetMessage
#undef GetModuleFileName
#undef GetModuleHandle
#undef GetObject
#undef GetProp
#undef GetTempFileName
#undef GetTempPath
#undef GetUserName
#undef GetVersionEx
#undef GetWindowText
#undef LoadBitmap
#undef LoadCursor
#undef LoadIcon
#undef LoadImage
#undef LoadLibrary
#undef LoadString
#undef MessageBox
#undef MoveFile
#undef OpenEvent
#undef OpenMutex
#undef PeekMessage
#undef PostMessage
#undef PostThreadMessage
#undef RegisterClass
#undef RemoveDirectory
#undef RemoveProp
#undef ReplaceText
#undef SearchPath
#undef SendMessage
#undef SetCurrentDirectory
#undef SetEnvironmentVariable
#undef SetFileAttributes
#undef SetProp
#undef SetWindowText
#undef TextOut
#undef UpdateResource
#undef Yield
#undef far
#undef near
#undef small

#endif
