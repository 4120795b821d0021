MEVSAVE ; Shared by all saves: refusals, the check of the record, filing, the event
 ; A refusal is an error reply and changes nothing.
 ;
NO(text) ; Refuses the call
 SET reply="-1^"_text
 QUIT
 ;
MAY(root,ien,patient,what) ; True if the record exists, is the patient's (if given), and is not locked; else refuses
 NEW node
 IF ien'?1N.11N DO NO("There is no such "_what_".") QUIT 0
 SET node=$GET(@root@(ien,0))
 IF node="" DO NO("The "_what_" "_ien_" does not exist any more.") QUIT 0
 IF patient'="",$PIECE(node,"^")'=patient DO NO("The "_what_" belongs to another patient.") QUIT 0
 IF $PIECE(node,"^",3) DO NO("The "_what_" is locked.") QUIT 0
 QUIT 1
 ;
CHANGED(patient,kind) ; Raises the event of a patient's data and sets the reply
 DO RAISE^MEVEVENTS($SELECT(kind="REF":"REFUSAL.",1:"VXR.")_patient_"."_kind,"")
 SET reply=1
 QUIT
 ;
PUT(root,ien,node) ; Files a patient's only record of a kind; the audit keeps the former one
 NEW ignored
 IF $DATA(@root@(ien,0)) DO KEEP^MEVFILES(root,ien) SET @root@(ien,0)=node QUIT
 SET ignored=$$FILE^MEVFILES(root,ien,node)
 QUIT
 ;
BADDATE(date,bad) ; The error of a text that is neither empty nor a date; otherwise bad, the error of an earlier date
 NEW fault
 SET fault=$SELECT(date="":"",1:$$FAULT^MEVDATE(date,$$BRIEF^MEVTEXT(date,40)_" is not a date."))
 QUIT $SELECT(fault="":bad,1:fault)
