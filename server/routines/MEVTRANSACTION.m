MEVTRANSACTION ; Calls that change data: one transaction each, done once, kept in the audit (MEVAUDIT)
 ; Does not know what the calls do. Such a call answers in single form, with reply.
 ;
 ; ^MEVDONE(session name)=day of the last change ^ how many are kept    ^MEVDONE(session name,request)=audit ^ reply
 ;
ONCE(number,name,entry) ; Carries out entry from the table of calls; a repeated number is answered from memory.
 ; Sets reply, or failure; filed says whether the change was made, a failure notwithstanding.
 NEW asked,audit,refusals,touched,unseen
 SET asked=param ; a call may put its parameter in order
 IF $DATA(^MEVDONE(token,number)) DO RECALL QUIT
 IF '$$JOURNALED SET failure="The server cannot save: its disk is full." QUIT
 TSTART ():SERIAL
 KILL reply,signals,touched
 SET failure="",reply="",param=asked,refusals=0
 ; Asked again: another process of the session, cut off from its client but still at work, may have filed it meanwhile.
 IF $DATA(^MEVDONE(token,number)) DO RECALL TCOMMIT  QUIT
 SET audit=$$BEGIN^MEVAUDIT,unseen=$$REFUSED^MEVCONFLICTS
 IF unseen'="" SET reply="-1^"_unseen
 IF unseen="" DO @entry ; from the table of calls, never from a client
 DO REMEMBER
 TCOMMIT
 SET filed=reply'<0 ; whatever fails from here on, the change was made, unless it was refused
 DO SIGNAL^MEVEVENTS
 IF filed SET row=0
 ELSE  DO SLOW^MEVLIMITS(refusals)
 IF audit#500=0 ZSYSTEM $ZTRNLNM("mev_tidy") ; the start script's fixed command: journals that nobody needs any more
 IF filed,'$$JOURNALED SET failure="The change was made, but cannot be kept safe: the server's disk is full."
 QUIT
 ;
RECALL ; The reply of the first time. Another user's or another call's number is no repetition.
 NEW remembered
 SET remembered=^MEVDONE(token,number),audit=$PIECE(remembered,"^")
 IF $PIECE(^MEVAUD(audit),"^",2,3)'=(user_"^"_name)!'$$ASKED^MEVAUDIT(audit,asked) SET failure="Request "_number_" was another call." QUIT
 SET reply=$PIECE(remembered,"^",2,$LENGTH(remembered,"^"))
 QUIT
 ;
REMEMBER ; Keeps the audit's entry and the reply; of a session the last 50 replies
 NEW kept
 DO CHANGE^MEVAUDIT(name)
 SET kept=$PIECE($GET(^MEVDONE(token)),"^",2)+1
 SET ^MEVDONE(token,number)=audit_"^"_reply
 IF kept>50 KILL ^MEVDONE(token,$ORDER(^MEVDONE(token,""))) SET kept=50
 SET ^MEVDONE(token)=+$HOROLOG_"^"_kept
 QUIT
 ;
FORGET ; Drops what is remembered of sessions whose last change is more than two days ago
 NEW name
 SET name=""
 FOR  SET name=$ORDER(^MEVDONE(name)) QUIT:name=""  IF name'=token,$GET(^MEVDONE(name))<($HOROLOG-2) KILL ^MEVDONE(name)
 DO FORGET^MEVCONFLICTS
 QUIT
 ;
JOURNALED() ; What is saved is in the journal, so that it outlives a crash. The engine closes the journal when the disk is full,
 ; and goes on without; this opens it again as soon as there is room.
 NEW ignored
 IF $VIEW("JNLACTIVE","DEFAULT")=2 QUIT 1
 ZSYSTEM $ZTRNLNM("mev_journal_on") ; the start script's fixed command
 SET ignored=$DATA(^MEVAUD)
 QUIT $VIEW("JNLACTIVE","DEFAULT")=2
