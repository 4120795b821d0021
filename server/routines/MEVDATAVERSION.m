MEVDATAVERSION ; The version of the data, and the conversion of older data
 ;
 ; ^MEVDATA("VERSION")=version; data without it are of version 1
 ; ^MEVDATA("STEP")=progress of the current conversion, if it records any
 ; ^MEVDATA("SAMPLE")=1 if the people are invented
 ;
 ; Each entry point converts the data of the version before. Running it again must not change the result.
TABLE ; version;entry point;the text of its progress
 ;;2;NAMES^MEVDATAVERSION;Indexing the names
 ;;3;CHAIN^MEVAUDIT;Closing the former entries of the audit
 ;;
CURRENT() ; The version that this server reads and writes
 NEW line,text,version
 SET version=1
 FOR line=1:1 SET text=$PIECE($TEXT(TABLE+line),";;",2) QUIT:text=""  SET version=$PIECE(text,";")
 QUIT version
 ;
VERSION() ; The version of the data
 QUIT $GET(^MEVDATA("VERSION"),1)
 ;
READY ; Before the first request: converts data of an earlier version, refuses data of a later one
 NEW current,newer
 SET current=$$CURRENT
 IF $$VERSION<current DO LOCKED
 IF $$VERSION>current DO
 . SET newer="A newer server made this data (version "_$$VERSION_", this server supports "_current_"). Install it."
 . DO FAILED^MEVSESSION(0,newer)
 . HALT
 QUIT
 ;
LOCKED ; Runs the outstanding conversions in one session; the others wait
 NEW line,text
 FOR  LOCK +^MEVDATA:1 QUIT:$TEST  DO FRAME^MEVSESSION("P0"_$CHAR(10)_"Another session is converting the data")
 FOR line=1:1 SET text=$PIECE($TEXT(TABLE+line),";;",2) QUIT:text=""  IF $PIECE(text,";")>$$VERSION DO
 . DO FRAME^MEVSESSION("P0"_$CHAR(10)_$PIECE(text,";",3))
 . DO @$PIECE(text,";",2) ; from the table above
 . ; The version changes at the end, so that a killed session's conversion starts again.
 . TSTART ():SERIAL
 . KILL ^MEVDATA("STEP")
 . SET ^MEVDATA("VERSION")=$PIECE(text,";")
 . TCOMMIT
 LOCK -^MEVDATA
 QUIT
 ;
START ; Marks new data with the current version
 SET ^MEVDATA("VERSION")=$$CURRENT
 QUIT
 ;
SAMPLE ; Marks new data as sample data
 SET ^MEVDATA("SAMPLE")=1
 QUIT
 ;
ISSAMPLE() ; True if the people are invented
 QUIT $GET(^MEVDATA("SAMPLE"))=1
 ;
PROGRESS(percent,text) ; Sends a long conversion's progress, one frame a second; the caller declares told
 QUIT:$GET(told)=$HOROLOG
 SET told=$HOROLOG
 DO FRAME^MEVSESSION("P"_percent_$CHAR(10)_text)
 QUIT
 ;
NAMES ; Builds the indexes of names (MEVNAMEINDEX). Data of version 1 may have some or all of them.
 DO:$GET(^MEVFND)'=1 BUILD^MEVNAMEINDEX
 QUIT
