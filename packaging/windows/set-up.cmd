@echo off
rem Makes Quillmoor run from everywhere. With /q it does not wait for a key at the end.
if exist "%~dp0set-up.js" goto run
echo Unpack the whole zip first, then start set-up.cmd in its folder.
set status=1
goto end
:run
rem Where .js files are another program's, the engine has to be named.
set engine=
reg query HKCR\.js /ve 2>nul | find "JSFile" >nul
if errorlevel 1 set engine=//E:JScript
cscript //nologo %engine% "%~dp0set-up.js"
set status=%errorlevel%
:end
if not "%1"=="/q" pause
exit /b %status%
