MEVDATAVERSION ; The version of the data, and what brings older data to it
 ;
 ; ^MEVDATA("VERSION")=version; data without it are of version 1
 ; ^MEVDATA("STEP")=how far the present conversion has come, for those that keep it there
 ;
TABLE ; version;entry that brings the data of the version before to it, with the same outcome however often it runs;the words of its progress
 ;;2;NAMES^MEVDATAVERSION;Indexing the names
 ;;3;CHAIN^MEVAUDIT;Closing the former entries of the audit
 ;;
CURRENT() ; The version that this server's routines read and write
 NEW line,text,version
 SET version=1
 FOR line=1:1 SET text=$PIECE($TEXT(TABLE+line),";;",2) QUIT:text=""  SET version=$PIECE(text,";")
 QUIT version
 ;
VERSION() ; The version of the data
 QUIT $GET(^MEVDATA("VERSION"),1)
 ;
READY ; Before a session's first request: data of an earlier version are converted, once; those of a later one are refused
 NEW current
 SET current=$$CURRENT
 IF $$VERSION<current DO LOCKED
 IF $$VERSION>current DO
 . DO FAILED^MEVSESSION(0,"These data were made by a newer server (version "_$$VERSION_" of the data, this one knows "_current_"). Install that.")
 . HALT
 QUIT
 ;
LOCKED ; The conversions that are due, by one session; the others wait
 NEW line,text
 FOR  LOCK +^MEVDATA:1 QUIT:$TEST  DO FRAME^MEVSESSION("P0"_$CHAR(10)_"Another session is converting the data")
 FOR line=1:1 SET text=$PIECE($TEXT(TABLE+line),";;",2) QUIT:text=""  IF $PIECE(text,";")>$$VERSION DO
 . DO FRAME^MEVSESSION("P0"_$CHAR(10)_$PIECE(text,";",3))
 . DO @$PIECE(text,";",2) ; from the table above
 . ; A killed session's conversion is begun once more: the version goes with its end.
 . TSTART ():SERIAL
 . KILL ^MEVDATA("STEP")
 . SET ^MEVDATA("VERSION")=$PIECE(text,";")
 . TCOMMIT
 LOCK -^MEVDATA
 QUIT
 ;
START ; New data are of the current version
 SET ^MEVDATA("VERSION")=$$CURRENT
 QUIT
 ;
TOLD(percent,text) ; For a long conversion: one frame a second; told belongs to the caller
 QUIT:$GET(told)=$HOROLOG
 SET told=$HOROLOG
 DO FRAME^MEVSESSION("P"_percent_$CHAR(10)_text)
 QUIT
 ;
NAMES ; The indexes of names (MEVNAMEINDEX). Data of version 1 may have them already, or a part.
 DO:$GET(^MEVFND)'=1 BUILD^MEVNAMEINDEX
 QUIT
